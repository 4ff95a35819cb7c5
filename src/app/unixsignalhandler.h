// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "shared/signalpipe.h"

#include <QObject>
#include <QPointer>

class SettingsController;

/// Turns SIGUSR1, which device scripts send, into a call of the settings controller. The event loop makes the
/// call, see SignalPipe. Several signals at once cause one call, because the message file holds only the last
/// message.
class UnixSignalHandler : public QObject
{
    Q_OBJECT

public:
    /// Returns the one handler, which is made on first use and never destroyed.
    static UnixSignalHandler *instance();
    /// Installs `sigusr1` for SIGUSR1. Needs no application object; an earlier signal is kept for it. On
    /// failure writes a line to standard error and returns false.
    static bool install();

    void setController(SettingsController *controller);
    /// Notifies the controller as a signal does; for ordinary code.
    void updateController();

    /// The signal handler; async-signal-safe.
    static void sigusr1(int signal);

signals:
    void notifyController();

private:
    UnixSignalHandler();

    SignalPipe m_signalPipe;
    QPointer<SettingsController> m_controller;
};

/// A handler for use from a debugger: it prints a line when a signal arrives.
void handle_signal(int signal);
