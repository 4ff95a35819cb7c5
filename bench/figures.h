// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

/// What a measured program tells the program `kt-bench`.
namespace Bench {

/// Milliseconds since whoever started this process took the time; see `startVariable`.
double sinceStart();
/// Holds CLOCK_MONOTONIC, in nanoseconds, from just before the process was started.
constexpr char startVariable[] = "KT_BENCH_START";
void print(const char *figure, double value);
/// Prints what this process holds: resident, its share of it, and the most so far, in MB.
void printMemory(const QByteArray &when);

} // namespace Bench
