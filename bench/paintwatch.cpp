// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "paintwatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QWidget>

#include <cstdio>
#include <ctime>

bool PaintWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (m_painted)
        return false;
    if (event->type() == QEvent::Paint && watched->isWidgetType()
        && static_cast<QWidget *>(watched)->isWindow())
        m_painting = true;
    const bool paints = event->type() == QEvent::Expose || event->type() == QEvent::UpdateRequest;
    if (!paints || m_painting)
        return false;
    // Delivered here, so that the clock is read when everything is painted and handed to the display.
    watched->event(event);
    if (m_painting) {
        m_painted = true;
        Bench::print("painted", Bench::sinceStart());
        Bench::printMemory("painted");
        Bench::painted();
    }
    return true;
}

namespace {

/// A line "NAME:   1234 kB" of a file of /proc, in MB.
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
    print(when + "-rss", field("status", "VmRSS"));
    print(when + "-pss", field("smaps_rollup", "Pss"));
    print(when + "-peak", field("status", "VmHWM"));
}

} // namespace Bench

static void watchFirstPaint()
{
    static PaintWatch watch;
    QCoreApplication::instance()->installEventFilter(&watch);
    Bench::print("loaded", Bench::sinceStart());
    Bench::loaded();
}
Q_COREAPP_STARTUP_FUNCTION(watchFirstPaint)
