// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QSocketNotifier>

// Turns the signals SIGTERM, SIGINT and SIGUSR1 into Qt signals. The handler writes one byte into a pipe and
// nothing else. At most one object at a time; a signal that arrives while there is none waits for the next.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(QObject *parent = nullptr);

signals:
    void stopRequested();
    void refreshRequested();

private:
    void onReadable();

    QSocketNotifier m_notifier;
};
