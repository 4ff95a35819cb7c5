// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// kt-bench: runs the measured programs of its folder in turn and prints the table. bench/run provides a
// display and a device.

#include "measurement.h"
#include "table.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr int runs = 15;

const QString window = QStringLiteral("kt-bench-window");
const QString launcher = QStringLiteral("kt-bench-launcher");

/// Alternates between the programs, so that other load affects them alike. The first round warms the caches.
Readings readAll()
{
    std::fprintf(stderr, "%d rounds of five programs, then sessions, lists and a month: two minutes\n", runs);
    Readings all;
    for (int run = 0; run <= runs; ++run) {
        const bool kept = run > 0;
        Measurement::run(kept ? &all.bare : nullptr, window, QStringLiteral("xcb"));
        Measurement::run(kept ? &all.plainBare : nullptr, window, QStringLiteral("xcb"), QString(), true);
        Measurement::run(kept ? &all.launcher : nullptr, launcher, QStringLiteral("xcb"));
        Measurement::run(kept ? &all.bareOffScreen : nullptr, window, QStringLiteral("offscreen"));
        Measurement::run(kept ? &all.launcherOffScreen : nullptr, launcher, QStringLiteral("offscreen"));
    }
    Measurement::run(&all.sessions, launcher, QStringLiteral("xcb"), QStringLiteral("sessions"));
    Measurement::run(&all.servers, launcher, QStringLiteral("xcb"), QStringLiteral("servers"));
    Measurement::run(&all.month, QStringLiteral("kt-bench-month"), QStringLiteral("offscreen"));
    return all;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const Readings all = readAll();
    Table::print(all);
    return 0;
}
