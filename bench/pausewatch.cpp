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
    // Up to now, and not up to when our thread looked last: on a busy machine that may be long ago.
    const double waiting = m_probed ? milliseconds(now - *m_probed) : 0;
    result.longestMs = std::max(result.longestMs, waiting);
    if (waiting > lateMs)
        result.lateMs += waiting;
    result.lateMs = std::min(result.lateMs, result.totalMs);
    m_figures = Figures();
    m_since = now;
    return result;
}

void PauseWatch::run()
{
    for (;;) {
        const Clock::time_point sent = Clock::now();
        {
            const std::lock_guard lock(m_mutex);
            m_probed = sent;
        }
        probe();
        {
            const std::lock_guard lock(m_mutex);
            if (m_ending)
                return;
            const double waited = milliseconds(Clock::now() - sent);
            m_figures.longestMs = std::max(m_figures.longestMs, waited);
            m_figures.lateMs += waited > lateMs ? waited : 0;
            ++m_figures.probes;
            m_probed.reset();
        }
        std::this_thread::sleep_until(sent + probeInterval);
    }
}

void PauseWatch::probe()
{
    const QByteArray request = ConsoleFormat::request(ConsoleFormat::Command::GetJson);
    while (m_load.receive(0)) { } // replies to repeated requests
    m_load.send(request);
    Clock::time_point sent = Clock::now();
    while (!m_load.receive(sliceMs)) {
        const std::lock_guard lock(m_mutex);
        if (m_ending)
            return;
        if (milliseconds(Clock::now() - sent) > repeatMs) {
            m_load.send(request);
            sent = Clock::now();
        }
    }
}
