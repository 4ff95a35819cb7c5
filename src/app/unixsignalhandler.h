// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>

class QSocketNotifier;
class SettingsController;

/// Turns SIGUSR1, by which device scripts ask for attention, into a call of the settings controller.
///
/// The signal may arrive at any moment, in the middle of an allocation too. The handler therefore only writes
/// a byte into a pipe; the event loop reads it and emits `notifyController`, so that the controller's work is
/// done there. Signals that arrive together are told once: the message file holds the last message only.
class UnixSignalHandler : public QObject
{
    Q_OBJECT

public:
    /// The one handler, made on first use and never destroyed.
    static UnixSignalHandler *instance();
    /// Installs `sigusr1` for SIGUSR1. Needs no application object; a signal that comes before there is one
    /// is kept. False, with a line on standard error, when it cannot be installed.
    static bool install();

    void setController(SettingsController *controller);
    /// The same as a signal, from ordinary code.
    void updateController();

    /// The signal handler; async-signal-safe.
    static void sigusr1(int signal);

signals:
    void notifyController();

private:
    UnixSignalHandler();
    void drain();

    QSocketNotifier *m_notifier = nullptr;
    QPointer<SettingsController> m_controller;
};

/// A handler to put in by hand from a debugger, to see whether a script's signal arrives at all.
void handle_signal(int signal);
