// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// kt-bench-pauses: uses the launcher while its device tools are fast, slow, or hang, and prints how long its
// event loop pauses and when it paints first. bench/run provides a display, a device and a network of its
// own. KT_BENCH_SHORT=1 selects two speeds and one hanging tool. KT_BENCH_TOOLS, such as "slow 500" or "hang
// kt-network-config.is-wired-linked", measures only that.

#include "launcheruse.h"
#include "table.h"
#include "userlauncher.h"

#include <QCoreApplication>

#include <algorithm>
#include <functional>

namespace {

constexpr int bareRuns = 8;
constexpr double paintFactor = 1.25;

bool isShort()
{
    return qEnvironmentVariableIsSet("KT_BENCH_SHORT");
}

double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double barePaintMs()
{
    QVector<double> paints;
    for (int run = 0; run <= bareRuns; ++run) {
        const BenchDevice device;
        paints += UserLauncher(QStringLiteral("kt-bench-window"), device).millisecondsToPaint();
    }
    return median(paints.mid(1)); // the first one warms the caches
}

QString rounded(double value)
{
    return QString::number(value, 'f', value < 10 ? 1 : 0);
}

QString percent(double part)
{
    return QStringLiteral("%1 %").arg(QString::number(100 * part, 'f', part > 0 && part < 0.1 ? 1 : 0));
}

/// The uses of one column: one, or several of which the worst counts.
using Uses = QVector<Use>;
using Figure = std::function<double(const Use &)>;

double worst(const Uses &uses, const Figure &figure)
{
    double result = 0;
    for (const Use &use : uses)
        result = std::max(result, figure(use));
    return result;
}

/// A row with the worst value of each column, and whether all are within the limit.
QStringList row(const QString &name, const QVector<Uses> &columns, const Figure &figure, double limit)
{
    QStringList cells(name);
    double most = 0;
    for (const Uses &uses : columns) {
        const double value = worst(uses, figure);
        most = std::max(most, value);
        cells += rounded(value);
    }
    return cells << rounded(limit) << (most <= limit ? QStringLiteral("yes") : QStringLiteral("**no**"));
}

constexpr double firstTimeLimitMs = 100;
constexpr double infoReplyLimitMs = 30000;

double paintOf(const Use &use)
{
    return median(use.paints);
}

Table::Rows speedRows(const QStringList &names, const QVector<Uses> &columns, double bareMs)
{
    Table::Rows rows{QStringList(QStringLiteral("Device tools")) + names << QStringLiteral("Limit")
                                                                         << QStringLiteral("Reached"),
                     row(QStringLiteral("start to first paint, ms; the bare window %1").arg(rounded(bareMs)),
                         columns, paintOf, paintFactor * bareMs)};
    const Use &first = columns.constFirst().constFirst();
    for (int phase = 0; phase < first.phases.size(); ++phase) {
        const QString name = first.phases.at(phase).first;
        rows += row(
            QStringLiteral("longest pause, ms: ") + name, columns,
            [phase](const Use &use) { return use.phases.at(phase).second.longestMs; },
            name == buildingPhase || name == showingPhase ? firstTimeLimitMs : PauseWatch::lateMs);
    }
    QStringList late(QStringLiteral("share of the time late by more than %1 ms").arg(PauseWatch::lateMs));
    QStringList calls(QStringLiteral("tools called"));
    for (const Uses &uses : columns) {
        late += percent(worst(uses, [](const Use &use) { return use.lateShare(); }));
        calls += QString::number(worst(uses, [](const Use &use) { return use.toolCalls; }));
    }
    return rows << late
                << row(
                       QStringLiteral("reply to GET INFO, ms"), columns,
                       [](const Use &use) { return use.infoMs; }, infoReplyLimitMs)
                << row(
                       QStringLiteral("- the next one, ms"), columns,
                       [](const Use &use) { return use.knownInfoMs; }, infoReplyLimitMs)
                << calls;
}

Table::Rows hangingRows(const QVector<ToolSpeed> &speeds, const Uses &uses)
{
    Table::Rows rows{{QStringLiteral("This tool hangs"), QStringLiteral("Longest pause, ms"),
                      QStringLiteral("Late"), QStringLiteral("First paint, ms"),
                      QStringLiteral("GET INFO, ms")}};
    for (int i = 0; i < uses.size(); ++i) {
        const Use &use = uses.at(i);
        rows += QStringList{QStringLiteral("`%1`").arg(speeds.at(i).name), rounded(use.longestMs()),
                            percent(use.lateShare()), rounded(paintOf(use)), rounded(use.infoMs)};
    }
    return rows;
}

ToolSpeed hanging(const QString &call)
{
    return {call.section(QLatin1Char('.'), -1), QStringLiteral("hang"), call};
}

QVector<ToolSpeed> hangingTools()
{
    QVector<ToolSpeed> speeds;
    for (const char *call :
         {"kt-network-config.is-wired-linked", "kt-network-config.check-wireless-point",
          "kt-network-config.get-eth0-parameters", "kt-network-config.set-config", "kt-check-wifi",
          "tvservice", "hostname", "kt-set-resolution", "kt-set-hostname"})
        speeds += hanging(QLatin1String(call));
    return isShort() ? speeds.mid(0, 1) : speeds;
}

QVector<ToolSpeed> allSpeeds()
{
    const QVector<ToolSpeed> speeds{{QStringLiteral("fast"), QString(), QString()},
                                    {QStringLiteral("1 s each"), QStringLiteral("slow 1000"), QString()},
                                    {QStringLiteral("200 ms each"), QStringLiteral("slow 200"), QString()}};
    return isShort() ? speeds.mid(0, 2) : QVector<ToolSpeed>{speeds[0], speeds[2], speeds[1]};
}

void measureOne(const QString &fault)
{
    const QString hang = QStringLiteral("hang ");
    const ToolSpeed speed
        = fault.startsWith(hang) ? hanging(fault.mid(hang.size())) : ToolSpeed{fault, fault, {}};
    Table::printRows(speedRows({speed.name}, {{measureUse(speed, isShort())}}, barePaintMs()));
}

void measureAll()
{
    const double bareMs = barePaintMs();
    QStringList names;
    QVector<Uses> columns;
    for (const ToolSpeed &speed : allSpeeds()) {
        names += speed.name;
        columns += Uses{measureUse(speed, isShort())};
    }
    Uses hung;
    const QVector<ToolSpeed> tools = hangingTools();
    for (const ToolSpeed &speed : tools)
        hung += measureUse(speed, isShort());
    names += QStringLiteral("one hangs");
    columns += hung;
    Table::printRows(speedRows(names, columns, bareMs));
    Table::printRows(hangingRows(tools, hung));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString fault = qEnvironmentVariable("KT_BENCH_TOOLS");
    if (fault.isEmpty())
        measureAll();
    else
        measureOne(fault);
    return 0;
}
