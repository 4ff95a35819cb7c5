// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/unixsignalhandler.h"

#include "app/settingscontroller.h"

#include <csignal>
#include <cstdio>

UnixSignalHandler::UnixSignalHandler()
{
    connect(&m_signalPipe, &SignalPipe::received, this, &UnixSignalHandler::notifyController);
}

UnixSignalHandler *UnixSignalHandler::instance()
{
    static auto *handler = new UnixSignalHandler;
    return handler;
}

bool UnixSignalHandler::install()
{
    if (SignalPipe::install(SIGUSR1, sigusr1))
        return true;
    std::perror("Error: cannot handle SIGUSR1");
    return false;
}

void UnixSignalHandler::sigusr1(int signal)
{
    SignalPipe::notify(signal);
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
