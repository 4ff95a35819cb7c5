// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// kt-bench-console: starts the launcher off screen, sends it a management console's requests, and prints the
// table of docs/performance.md. bench/run provides a device and a network of its own.

#include "consoleload.h"
#include "table.h"

#include "update/consoleformat.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace {

constexpr int startLimitMs = 30000;
constexpr int rounds = 2000;
constexpr int slowRounds = 100; ///< for requests that wait for the disk, or at first for tools
constexpr int atOnce = 16;
constexpr int userTimeField = 11; ///< in /proc/PID/stat, after the name; the system time follows
constexpr double aimPerSecond = 5000;
constexpr double noGrowthMb = 1;

/// The launcher, with its processor time and memory.
class Launcher
{
public:
    Launcher()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=false"));
        m_process.setProcessEnvironment(environment);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/kt964"), QStringList());
        if (!m_process.waitForStarted())
            qFatal("the launcher does not start");
    }
    ~Launcher()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// Returns the time since its start.
    double processorMs() const
    {
        QFile file(QStringLiteral("/proc/%1/stat").arg(m_process.processId()));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the launcher is gone");
        const QByteArray stat = file.readAll();
        const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        const double ticks
            = fields.value(userTimeField).toDouble() + fields.value(userTimeField + 1).toDouble();
        return 1000 * ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    double residentMb() const
    {
        QFile file(QStringLiteral("/proc/%1/status").arg(m_process.processId()));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the launcher is gone");
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("VmRSS:"))
                return line.mid(6).chopped(3).trimmed().toDouble() / 1024;
        }
        return 0;
    }

private:
    QProcess m_process;
};

QByteArray mergeRequest(int timeout)
{
    const QByteArray json = "{\"firmware info\":{\"configuration version\":15},"
                            "\"display settings\":{\"screen saver timeout\":"
        + QByteArray::number(timeout) + "}}";
    return ConsoleFormat::setJsonRequest(json).value();
}

QString number(double value)
{
    return QString::number(value, 'f', value < 10 ? 2 : 0);
}

QStringList row(const QString &name, const Latencies &alone, double perSecond,
                const QString &remark = QString())
{
    return {name,
            number(alone.quantile(0.5)),
            number(alone.quantile(0.99)),
            number(1000 / alone.mean()),
            perSecond > 0 ? number(perSecond) : QString(),
            remark};
}

QString verdict(bool reached)
{
    return reached ? QStringLiteral("yes") : QStringLiteral("**no**");
}

Table::Rows measure(Launcher &launcher, ConsoleLoad &load)
{
    using namespace ConsoleFormat;
    const QByteArray getJson = request(Command::GetJson);
    const Latencies reading = load.askInTurn([&](int) { return getJson; }, rounds);
    const double before = launcher.processorMs();
    const double readingRate = load.askAtOnce(getJson, 10 * rounds, atOnce);
    const double processor = (launcher.processorMs() - before) / (10 * rounds);
    const Latencies merging = load.askInTurn([](int i) { return mergeRequest(5 + i % 2); }, slowRounds);
    const Latencies asking = load.askInTurn([](int) { return request(Command::DeviceInfo); }, slowRounds);
    return {{QStringLiteral("The console's requests"), QStringLiteral("Median, ms"),
             QStringLiteral("99 of 100, ms"), QStringLiteral("A second"),
             QStringLiteral("- %1 at once").arg(atOnce), QStringLiteral("Aim reached")},
            row(QStringLiteral("GET JSON"), reading, readingRate,
                QStringLiteral("%1 a second: %2")
                    .arg(number(aimPerSecond), verdict(readingRate >= aimPerSecond))),
            {QStringLiteral("- of it processor time, mean"), number(processor)},
            row(QStringLiteral("SET JSON PARTIAL"), merging, 0),
            row(QStringLiteral("GET INFO, its facts known"), asking, 0)};
}

Table::Rows measureMemory(const Launcher &launcher, ConsoleLoad &load)
{
    const int total = std::max(qEnvironmentVariableIntValue("KT_BENCH_DATAGRAMS"), 0);
    const int datagrams = total > 0 ? total : 1000000;
    load.pour(datagrams / 10);
    const double before = launcher.residentMb();
    load.pour(datagrams - datagrams / 10);
    const double after = launcher.residentMb();
    return {{QStringLiteral("Memory"), QStringLiteral("MB"), QStringLiteral("Aim reached")},
            {QStringLiteral("after %1 datagrams of all kinds").arg(datagrams / 10),
             QString::number(before, 'f', 1),
             {}},
            {QStringLiteral("after %1").arg(datagrams), QString::number(after, 'f', 1),
             QStringLiteral("no growth: ") + verdict(after - before < noGrowthMb)}};
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    Launcher launcher;
    ConsoleLoad load;
    if (!load.waitForDevice(startLimitMs))
        qFatal("the launcher does not answer");
    std::fprintf(stderr, "the console's requests, then many datagrams: half a minute\n");
    Table::printRows(measure(launcher, load));
    Table::printRows(measureMemory(launcher, load));
    return 0;
}
