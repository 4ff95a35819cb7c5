// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/countdown.h"

Countdown::Countdown(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(tickMs);
    connect(&m_timer, &QTimer::timeout, this, &Countdown::tick);
}

void Countdown::start()
{
    m_seconds = startSeconds;
    m_timer.start();
    emit remaining(m_seconds);
}

void Countdown::stop()
{
    m_timer.stop();
}

void Countdown::resume()
{
    m_timer.start();
}

bool Countdown::isRunning() const
{
    return m_timer.isActive();
}

void Countdown::setTick(int milliseconds)
{
    m_timer.setInterval(milliseconds);
}

void Countdown::tick()
{
    const int shown = m_seconds--;
    if (shown > 0) {
        emit remaining(m_seconds);
        return;
    }
    m_timer.stop();
    emit elapsed();
}
