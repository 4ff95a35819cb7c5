// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/sessionsignals.h"

#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>

SessionSignals::SessionSignals(QObject *parent)
    : QObject(parent)
{
    for (const int number : {SIGTERM, SIGINT, SIGUSR1}) {
        if (!SignalPipe::install(number))
            std::abort();
    }
    // What a server sends is handled in this process and its children: none of them may become root, by sudo
    // or otherwise.
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    // The launcher sends SIGUSR1 to this process name when the sound device changes.
    ::prctl(PR_SET_NAME, "zClient.bin");
    connect(&m_pipe, &SignalPipe::received, this, [this](int number) {
        if (number == SIGUSR1)
            emit refreshRequested();
        else
            emit stopRequested();
    });
}
