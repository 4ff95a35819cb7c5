// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/sessiondescription.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// The arguments and the standard input of xfreerdp. Secrets go through the standard input only, because
/// other processes can read the arguments and the environment.
struct FreeRdpCommand
{
    QStringList arguments;
    QByteArray input;
    QStringList secrets; ///< masked in its output
};

/// What a session uses of this device's hardware.
struct SessionHardware
{
    QString output;           ///< the ALSA name of the sound device; empty: FreeRDP chooses one
    QString input;            ///< the ALSA name of the microphone; empty: none
    QStringList redirections; ///< options for the redirected devices; see redirectionOptions()
};

FreeRdpCommand freeRdpCommand(const SessionDescription &session, const SessionHardware &hardware = {});

/// Removes the variables that would change a session in ways its description does not state.
QProcessEnvironment freeRdpEnvironment(QProcessEnvironment environment);
