// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/unixsignals.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

int signalPipe[2] = {-1, -1};

extern "C" void forwardSignal(int number)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe already holds enough news.
    if (write(signalPipe[1], &byte, 1) < 0) { }
    errno = savedErrno;
}

void installHandler(int number)
{
    struct sigaction action = {};
    action.sa_handler = forwardSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

int openSignalPipe()
{
    if (signalPipe[0] >= 0)
        return signalPipe[0];
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        std::abort();
    for (const int number : {SIGTERM, SIGINT, SIGUSR1})
        installHandler(number);
    // The launcher tells the process of this name that the sound has moved.
    prctl(PR_SET_NAME, "zClient.bin");
    return signalPipe[0];
}

} // namespace

UnixSignals::UnixSignals(QObject *parent)
    : QObject(parent)
    , m_notifier(openSignalPipe(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &UnixSignals::onReadable);
}

void UnixSignals::onReadable()
{
    unsigned char number = 0;
    while (read(signalPipe[0], &number, 1) == 1) {
        if (number == SIGUSR1)
            emit refreshRequested();
        else
            emit stopRequested();
    }
}
