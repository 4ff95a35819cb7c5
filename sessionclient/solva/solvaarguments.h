// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/sessiondescription.h"

#include <QString>
#include <QStringList>

// What the launcher asks for: a desktop of a broker. The session lacks only its address.
struct SolvaArguments
{
    QString server; // the broker: a host, or host:port
    QString desktop;
    SessionDescription session;
    QString fault; // why the arguments cannot be used; empty when they can
};

SolvaArguments parseSolvaArguments(const QStringList &arguments);

// The arguments as texts. The password among them is overwritten where others can read it, in the process's
// own command line.
QStringList takeArguments(int argc, char **argv);
