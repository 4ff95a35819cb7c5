// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QCoreApplication>

// What the session programs have in common: one session, then its end explained.

enum SessionExitCode { SessionEnded = 0, SessionFailed = 1, WrongUsage = 2, StatusNotWritten = 3 };

// Runs a client's one session in a QCoreApplication: a session needs no window system of ours, and starting
// without one saves its memory for the session.
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

// Shows why the session ended until that is dismissed, in an application of its own.
void explain(int argc, char **argv, const SessionEnd &end);
