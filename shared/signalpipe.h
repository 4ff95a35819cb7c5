// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class QSocketNotifier;

/// Hands Unix signals to the event loop.
///
/// A signal may interrupt any code, even an allocation. The handler therefore only sets a flag and writes one
/// byte into a pipe. The event loop reads the pipe and emits `received`. A signal that arrives several times
/// before is reported once; one that arrives before the object exists is reported later. The process has one
/// pipe, so only one object may exist at a time.
class SignalPipe : public QObject
{
    Q_OBJECT

public:
    using Handler = void (*)(int);

    explicit SignalPipe(QObject *parent = nullptr);

    /// Installs a handler, which must call `notify`. Needs no application object. On failure returns false
    /// and leaves the reason in errno.
    static bool install(int number, Handler handler = notify);

    /// The signal handler; async-signal-safe.
    static void notify(int number);

signals:
    void received(int number);

private:
    void readPipe();

    QSocketNotifier *m_notifier = nullptr;
};
