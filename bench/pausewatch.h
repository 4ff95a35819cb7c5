// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "consoleload.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

/// Observes from outside whether the launcher's event loop runs: a thread sends GET JSON every 5 ms. The time
/// until the reply is the rest of the pause in which the request arrived.
class PauseWatch
{
public:
    static constexpr double lateMs = 50;

    struct Figures
    {
        double longestMs = 0;
        double lateMs = 0; ///< the total of the pauses longer than `PauseWatch::lateMs`
        double totalMs = 0;
        int probes = 0;
    };

    /// The launcher must reply by now.
    PauseWatch();
    ~PauseWatch();
    PauseWatch(const PauseWatch &) = delete;
    PauseWatch &operator=(const PauseWatch &) = delete;

    /// Returns the figures since the last call. A pause that goes on counts here and in the next figures.
    Figures take();

private:
    using Clock = std::chrono::steady_clock;

    void run();
    /// Waits for one reply, and repeats a lost request.
    void probe();

    ConsoleLoad m_load;
    std::mutex m_mutex;
    Figures m_figures;
    std::optional<Clock::time_point> m_probed; ///< when the current probe began, until its reply
    bool m_ending = false;
    Clock::time_point m_since = Clock::now();
    std::thread m_thread; ///< last: it uses the others
};
