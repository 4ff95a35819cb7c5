// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "shared/signalpipe.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may use lock-free atomics only");

int pipeEnds[2] = {-1, -1};
std::array<std::atomic<bool>, NSIG> pending{};

bool openPipe()
{
    return pipeEnds[0] >= 0 || ::pipe2(pipeEnds, O_NONBLOCK | O_CLOEXEC) == 0;
}

} // namespace

SignalPipe::SignalPipe(QObject *parent)
    : QObject(parent)
{
    if (!openPipe())
        return;
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalPipe::readPipe);
}

bool SignalPipe::install(int number, Handler handler)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask);
    return openPipe() && ::sigaction(number, &action, nullptr) == 0;
}

void SignalPipe::notify(int number)
{
    const int savedErrno = errno;
    pending[static_cast<std::size_t>(number)] = true;
    // When the pipe is full, the event loop has enough to read already.
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], "", 1);
    errno = savedErrno;
}

void SignalPipe::readPipe()
{
    char bytes[256];
    while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) { }
    for (std::size_t number = 0; number < pending.size(); ++number) {
        if (pending[number].exchange(false))
            emit received(static_cast<int>(number));
    }
}
