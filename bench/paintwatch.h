// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

/// Waits, in the process that is measured, for the first window to be painted, and prints when that was and
/// what the process held then. It comes with its source file alone: Qt calls it while the application is
/// constructed, so that a program is measured with its own `main`.
class PaintWatch : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_painting = false;
    bool m_painted = false;
};

namespace Bench {

/// Milliseconds since whoever started this process took the time; see `startVariable`.
double sinceStart();
/// Holds CLOCK_MONOTONIC, in nanoseconds, from just before the process was started.
constexpr char startVariable[] = "KT_BENCH_START";
/// Prints one figure, to be read by the program `kt-bench`.
void print(const char *figure, double value);
/// Prints what this process holds: resident, its share of it, and the most so far, in MB.
void printMemory(const QByteArray &when);

/// Each measured program says what happens then.
void loaded();
void painted();

} // namespace Bench
