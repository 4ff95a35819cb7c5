// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/sessiondescription.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// All that xfreerdp is told. Secrets travel on its standard input, never in arguments or environment: those
// of a running process can be read by others.
struct FreeRdpCommand
{
    QStringList arguments;
    QByteArray input;
    QStringList secrets; // to be struck out of whatever it prints
};

// alsaDevice is the name of the ALSA device for the sound; empty leaves the choice to FreeRDP.
FreeRdpCommand freeRdpCommand(const SessionDescription &session, const QString &alsaDevice);

// Takes out of an environment what would change a session behind its description's back.
QProcessEnvironment freeRdpEnvironment(QProcessEnvironment environment);
