// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

/// The figures that a measured program prints for `kt-bench`.
namespace Bench {

/// Returns the milliseconds since the start of this process; see `startVariable`.
double sinceStart();
/// The environment variable with CLOCK_MONOTONIC in nanoseconds, just before the process was started.
constexpr char startVariable[] = "KT_BENCH_START";
void print(const char *figure, double value);
/// Prints this process's memory in MB: resident, proportional, and peak.
void printMemory(const QByteArray &when);

} // namespace Bench
