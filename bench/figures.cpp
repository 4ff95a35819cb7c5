// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "figures.h"

#include <QFile>

#include <cstdio>
#include <ctime>

namespace {

/// Returns the value of a line "NAME:   1234 kB" in a file of /proc, in MB.
double field(const char *file, const QByteArray &name)
{
    QFile status(QLatin1String("/proc/self/") + QLatin1String(file));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

} // namespace

namespace Bench {

double sinceStart()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    static const qint64 start = qEnvironmentVariable(startVariable).toLongLong();
    return static_cast<double>(now.tv_sec * 1000000000LL + now.tv_nsec - start) / 1e6;
}

void print(const char *figure, double value)
{
    std::printf("%s %.2f\n", figure, value);
    std::fflush(stdout);
}

void printMemory(const QByteArray &when)
{
    print((when + "-rss").constData(), field("status", "VmRSS"));
    print(when + "-pss", field("smaps_rollup", "Pss"));
    print(when + "-peak", field("status", "VmHWM"));
}

} // namespace Bench
