// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/unixsignalhandler.h"

#include "app/settingscontroller.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

int pipeEnds[2] = {-1, -1};

bool openPipe()
{
    return pipeEnds[0] >= 0 || ::pipe2(pipeEnds, O_NONBLOCK | O_CLOEXEC) == 0;
}

} // namespace

UnixSignalHandler::UnixSignalHandler()
{
    if (!openPipe())
        return;
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSignalHandler::drain);
}

UnixSignalHandler *UnixSignalHandler::instance()
{
    static auto *handler = new UnixSignalHandler;
    return handler;
}

bool UnixSignalHandler::install()
{
    struct sigaction action = {};
    action.sa_handler = UnixSignalHandler::sigusr1;
    sigfillset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    if (openPipe() && sigaction(SIGUSR1, &action, nullptr) == 0)
        return true;
    std::perror("Error: cannot handle SIGUSR1");
    return false;
}

void UnixSignalHandler::sigusr1(int)
{
    const int savedErrno = errno;
    // A full pipe means that the event loop has been told already.
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], "", 1);
    errno = savedErrno;
}

void UnixSignalHandler::drain()
{
    char bytes[256];
    while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) { }
    emit notifyController();
}

void UnixSignalHandler::setController(SettingsController *controller)
{
    if (m_controller)
        disconnect(this, nullptr, m_controller, nullptr);
    m_controller = controller;
    connect(this, &UnixSignalHandler::notifyController, controller, &SettingsController::getRemoteMessage,
            Qt::DirectConnection);
}

void UnixSignalHandler::updateController()
{
    emit notifyController();
}

void handle_signal(int signal)
{
    if (signal == SIGUSR1)
        std::puts("Jest Sygnal");
}
