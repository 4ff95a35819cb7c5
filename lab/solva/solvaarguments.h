// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/sessiondescription.h"

#include <QString>
#include <QStringList>

/// The parsed command line: a broker, one of its desktops, and the session without its address.
struct SolvaArguments
{
    QString server; ///< the broker: a host, or host:port
    QString desktop;
    SessionDescription session;
    QString error; ///< why the command line is rejected, or empty
};

SolvaArguments parseSolvaArguments(const QStringList &arguments);

/// Returns the arguments, with the program's name first. Overwrites the password in `argv`, because other
/// users can read a process's command line.
QStringList readArguments(int argc, char **argv);
