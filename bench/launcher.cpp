// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// Measures the launcher. The first argument selects the task after the first paint: none, "sessions" or
// "servers".

#include "launchertasks.h"
#include "paintwatch.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>

#include <cstdio>

namespace {

/// The time in device tools, from the launcher's log: "query: PROGRAM (ARGUMENTS) in 6.8 ms".
struct ToolTime
{
    int calls = 0;
    double sum = 0;
    double firstStart = 0;
    double lastEnd = 0;
};

ToolTime toolTime;

void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const QStringList words = message.split(QLatin1Char(' '));
    const int last = words.size() - 1;
    if (qstrcmp(context.category, "kt.device.commands") == 0 && words.value(0) == QLatin1String("query:")
        && words.value(last) == QLatin1String("ms")) {
        const double time = words.value(last - 1).toDouble();
        toolTime.lastEnd = Bench::sinceStart();
        if (toolTime.calls++ == 0)
            toolTime.firstStart = toolTime.lastEnd - time;
        toolTime.sum += time;
    } else if (type != QtDebugMsg && type != QtInfoMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

void startTask()
{
    const QString task = QCoreApplication::arguments().value(1);
    if (task == QLatin1String("sessions"))
        Bench::runSessions();
    else if (task == QLatin1String("servers"))
        Bench::showServers();
    else
        QCoreApplication::exit();
}

} // namespace

void Bench::loaded()
{
    QLoggingCategory::setFilterRules(QStringLiteral("kt.device.commands.debug=true"));
    qInstallMessageHandler(takeMessage);
}

void Bench::painted()
{
    print("tool-calls", toolTime.calls);
    print("tools", toolTime.sum);
    print("built", toolTime.firstStart);
    print("asked", toolTime.lastEnd);
    QTimer::singleShot(0, QCoreApplication::instance(), startTask);
}
