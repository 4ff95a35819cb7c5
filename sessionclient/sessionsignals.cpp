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
    // The launcher sends SIGUSR1 to this process name when the sound device changes.
    ::prctl(PR_SET_NAME, "zClient.bin");
    connect(&m_pipe, &SignalPipe::received, this, [this](int number) {
        if (number == SIGUSR1)
            emit refreshRequested();
        else
            emit stopRequested();
    });
}
