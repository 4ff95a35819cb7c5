// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pausewatch.h"

#include "update/consoleformat.h"

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds probeInterval(5);
constexpr int sliceMs = 10;
constexpr double repeatMs = 1000;

double milliseconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

} // namespace

PauseWatch::PauseWatch()
    : m_thread(&PauseWatch::run, this)
{ }

PauseWatch::~PauseWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_thread.join();
}

PauseWatch::Figures PauseWatch::take()
{
    const std::lock_guard lock(m_mutex);
    const Clock::time_point now = Clock::now();
    Figures result = m_figures;
    result.totalMs = milliseconds(now - m_since);
    result.longestMs = std::max(result.longestMs, m_waitingMs);
    if (m_waitingMs > lateMs)
        result.lateMs += m_waitingMs;
    result.lateMs = std::min(result.lateMs, result.totalMs);
    m_figures = Figures();
    m_since = now;
    return result;
}

void PauseWatch::run()
{
    for (;;) {
        const Clock::time_point sent = Clock::now();
        probe(sent);
        {
            const std::lock_guard lock(m_mutex);
            if (m_ending)
                return;
            const double waited = milliseconds(Clock::now() - sent);
            m_figures.longestMs = std::max(m_figures.longestMs, waited);
            m_figures.lateMs += waited > lateMs ? waited : 0;
            ++m_figures.probes;
            m_waitingMs = 0;
        }
        std::this_thread::sleep_until(sent + probeInterval);
    }
}

void PauseWatch::probe(Clock::time_point sent)
{
    const QByteArray request = ConsoleFormat::request(ConsoleFormat::Command::GetJson);
    while (m_load.receive(0)) { } // replies to repeated requests
    m_load.send(request);
    double repeated = 0;
    while (!m_load.receive(sliceMs)) {
        const std::lock_guard lock(m_mutex);
        if (m_ending)
            return;
        m_waitingMs = milliseconds(Clock::now() - sent);
        if (m_waitingMs - repeated > repeatMs) {
            m_load.send(request);
            repeated = m_waitingMs;
        }
    }
}
