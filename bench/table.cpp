// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "table.h"

#include "measurement.h"

#include <QStringList>
#include <QTextStream>

namespace {

constexpr double timeFactor = 1.25;
constexpr double offScreenTimeFactor = 2;
constexpr double memoryFactor = 1.3;
constexpr double listLimitMs = 50;

using Table::Rows;

QString rounded(double value)
{
    return QString::number(value, 'f', value < 10 ? 1 : 0);
}

/// Returns the median, with the quartiles of several runs.
QString cell(const Measurement &measurement, const char *name)
{
    const QString figure = QLatin1String(name);
    const QString low = rounded(measurement.quantile(figure, 0.25));
    const QString high = rounded(measurement.quantile(figure, 0.75));
    const QString median = rounded(measurement.median(figure));
    return low == high ? median : QStringLiteral("%1 (%2-%3)").arg(median, low, high);
}

/// Returns the last two columns: the limit, and whether the value is within it.
QStringList verdict(double value, double limit)
{
    return {rounded(limit), value <= limit ? QStringLiteral("yes") : QStringLiteral("**no**")};
}

Rows startRows(const Readings &all)
{
    const double bare = all.bare.median("painted");
    const double bareOff = all.bareOffScreen.median("painted");
    return {
        QStringList{QStringLiteral("start to first paint, ms"), cell(all.bare, "painted"),
                    cell(all.plainBare, "painted"), cell(all.launcher, "painted")}
            + verdict(all.launcher.median("painted"), timeFactor * bare),
        QStringList{QStringLiteral("- off screen, ms"),
                    cell(all.bareOffScreen, "painted"),
                    {},
                    cell(all.launcherOffScreen, "painted")}
            + verdict(all.launcherOffScreen.median("painted"), offScreenTimeFactor * bareOff),
    };
}

Rows memoryRows(const Readings &all)
{
    const double limit = memoryFactor * all.bare.median("painted-rss");
    const double limitOff = memoryFactor * all.bareOffScreen.median("painted-rss");
    return {
        QStringList{QStringLiteral("resident at first paint, MB"), cell(all.bare, "painted-rss"),
                    cell(all.plainBare, "painted-rss"), cell(all.launcher, "painted-rss")}
            + verdict(all.launcher.median("painted-rss"), limit),
        {QStringLiteral("- shared pages divided (Pss), MB"),
         cell(all.bare, "painted-pss"),
         cell(all.plainBare, "painted-pss"),
         cell(all.launcher, "painted-pss"),
         {},
         {}},
        {QStringLiteral("resident after 1 session, MB"),
         {},
         {},
         cell(all.sessions, "first-session-rss"),
         {},
         {}},
        QStringList{QStringLiteral("resident after 50 sessions, MB"), cell(all.bare, "painted-rss"),
                    cell(all.plainBare, "painted-rss"), cell(all.sessions, "sessions-rss")}
            + verdict(all.sessions.median("sessions-rss"), limit),
        QStringList{QStringLiteral("resident off screen, MB"),
                    cell(all.bareOffScreen, "painted-rss"),
                    {},
                    cell(all.launcherOffScreen, "painted-rss")}
            + verdict(all.launcherOffScreen.median("painted-rss"), limitOff),
    };
}

Rows listRows(const Measurement &servers)
{
    const std::pair<const char *, const char *> figures[] = {
        {"one-group", "5,000 in one group, ms"},
        {"one-group-unfolded", "- unfolded, ms"},
        {"many-groups", "5,000 groups of one, ms"},
        {"many-groups-unfolded", "- unfolded, ms"},
        {"many-groups-again", "- set anew while unfolded, ms"},
        {"found", "5,000 found on the network, ms"},
        {"document", "a document of 5,000 servers parsed, ms"},
    };
    Rows rows;
    for (const auto &[figure, name] : figures) {
        rows += QStringList{QLatin1String(name), {}, {}, cell(servers, figure)}
            + verdict(servers.median(figure), listLimitMs);
    }
    return rows;
}

Rows phaseRows(const Measurement &launcher)
{
    return {
        {QStringLiteral("Where the start goes"), QStringLiteral("ms")},
        {QStringLiteral("started and its libraries loaded"), cell(launcher, "loaded")},
        {QStringLiteral("document, style, window, built and painted"), cell(launcher, "building")},
    };
}

QString whole(const Measurement &month, const char *figure)
{
    return QString::number(qRound(month.median(figure)));
}

QString exact(const Measurement &month, const char *figure)
{
    return QString::number(month.median(figure), 'f', 1);
}

Rows monthRows(const Measurement &month)
{
    const QString beats = QStringLiteral("%1 heartbeats, %2 of them answered")
                              .arg(whole(month, "month-beats"), whole(month, "month-answered"));
    return {
        {beats, QStringLiteral("After two days"), QStringLiteral("After the month")},
        {QStringLiteral("resident, MB"), exact(month, "days-rss"), exact(month, "month-rss")},
        {QStringLiteral("- the most so far, MB"), exact(month, "days-peak"), exact(month, "month-peak")},
        {QStringLiteral("open sockets"), whole(month, "days-sockets"), whole(month, "month-sockets")},
        {QStringLiteral("- the most at any time"), {}, whole(month, "month-most-sockets")},
    };
}

} // namespace

void Table::printRows(const Rows &rows)
{
    QVector<int> widths(rows.first().size());
    for (const QStringList &row : rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] = qMax(widths.at(column), row.at(column).size());
    }
    QTextStream out(stdout);
    for (int number = 0; number < rows.size(); ++number) {
        out << '|';
        for (int column = 0; column < widths.size(); ++column)
            out << ' ' << rows.at(number).value(column).leftJustified(widths.at(column)) << " |";
        out << '\n';
        if (number > 0)
            continue;
        out << '|';
        for (const int width : qAsConst(widths))
            out << QString(width + 2, QLatin1Char('-')) << '|';
        out << '\n';
    }
    out << '\n';
}

void Table::print(const Readings &all)
{
    const Rows heading
        = {{QStringLiteral("Figure"), QStringLiteral("Bare window"), QStringLiteral("- no OpenGL"),
            QStringLiteral("Launcher"), QStringLiteral("Limit"), QStringLiteral("Reached")}};
    printRows(heading + startRows(all) + memoryRows(all) + listRows(all.servers));
    printRows(phaseRows(all.launcher));
    printRows(monthRows(all.month));
}
