// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QCoreApplication>

/// Code that the session programs share: they run one session and explain its end.

enum SessionExitCode { SessionEnded = 0, SessionFailed = 1, WrongUsage = 2, StatusNotWritten = 3 };

/// Runs a client's session in a QCoreApplication. It needs no QApplication, whose memory is left to the
/// session.
template <typename Client>
SessionEnd runToEnd(Client *client)
{
    SessionEnd outcome;
    QObject::connect(
        client, &Client::ended, client,
        [&outcome](const SessionEnd &end) {
            outcome = end;
            QCoreApplication::quit();
        },
        Qt::QueuedConnection);
    client->run();
    QCoreApplication::exec();
    return outcome;
}

SessionExitCode exitCodeOf(const SessionEnd &end);

/// Shows why the session ended in a QApplication, until the user closes the window. Returns whether to start
/// the session again, because the user trusts the server's new certificate.
bool explain(int argc, char **argv, const SessionEnd &end);
