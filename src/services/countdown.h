// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTimer>

/// Counts down in whole seconds from 5 to 0, shows 0 for a second as well, and then says that it has elapsed:
/// six ticks after the start.
class Countdown : public QObject
{
    Q_OBJECT

public:
    static constexpr int startSeconds = 5;
    static constexpr int tickMs = 1000;

    explicit Countdown(QObject *parent = nullptr);

    /// Starts, or starts anew from 5.
    void start();
    void stop();
    /// Goes on from where it was stopped.
    void resume();
    bool isRunning() const;
    /// For tests that have no seconds to spare.
    void setTick(int milliseconds);

signals:
    void remaining(int seconds);
    void elapsed();

private:
    void tick();

    QTimer m_timer;
    int m_seconds = 0;
};
