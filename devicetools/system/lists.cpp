// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/lists.h"

#include "devicetools-system/xkblayout.h"

#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QTimeZone>
#include <QVector>

#include <algorithm>
#include <tuple>

namespace {

constexpr qint64 fileLimit = 4LL * 1024 * 1024;

QByteArray joined(const QVector<QStringList> &entries)
{
    QByteArray text;
    for (const QStringList &entry : entries)
        text += entry.join(QStringLiteral(": ")).toUtf8() + '\n';
    return text;
}

/// A name must not look like two fields.
QString oneField(QString name)
{
    return name.replace(QLatin1String(": "), QLatin1String(", ")).simplified();
}

QVector<QStringList> tabbedLines(const QString &path)
{
    QVector<QStringList> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    for (const QByteArray &line : file.read(fileLimit).split('\n')) {
        if (!line.isEmpty() && !line.startsWith('#'))
            lines += QString::fromUtf8(line).split(QLatin1Char('\t'));
    }
    return lines;
}

} // namespace

namespace LayoutList {

namespace {

QString codeOf(const XkbLayout &layout)
{
    const QString code
        = layout.layout == QLatin1String("gb") ? QStringLiteral("UK") : layout.layout.toUpper();
    return layout.variant.isEmpty() ? code : code + QLatin1Char('-') + layout.variant;
}

/// "de   German" in the section of layouts, "nodeadkeys   de: German (no dead keys)" in that of variants.
QStringList entry(const QString &line, bool isVariant)
{
    const QString first = line.section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
    const QString rest = line.mid(line.indexOf(first) + first.size()).trimmed();
    const QString separator = QStringLiteral(": ");
    const QString name = isVariant ? rest.section(separator, 1) : rest;
    const QString spelled
        = isVariant ? QStringLiteral("%1(%2)").arg(rest.section(separator, 0, 0), first) : first;
    const auto layout = XkbLayout::from(spelled);
    if (!layout || name.isEmpty() || layout->layout == QLatin1String("custom"))
        return {};
    return {codeOf(*layout), layout->toString(), oneField(name)};
}

} // namespace

QByteArray make(const QByteArray &rules)
{
    QVector<QStringList> entries;
    QByteArray section;
    for (const QByteArray &line : rules.split('\n')) {
        if (line.startsWith('!')) {
            section = line.mid(1).trimmed();
            continue;
        }
        const bool isVariant = section == "variant";
        const QStringList found
            = isVariant || section == "layout" ? entry(QString::fromUtf8(line), isVariant) : QStringList();
        if (!found.isEmpty())
            entries += found;
    }
    std::stable_sort(entries.begin(), entries.end(), [](const QStringList &left, const QStringList &right) {
        return left.at(2) < right.at(2);
    });
    return joined(entries);
}

} // namespace LayoutList

namespace ZoneList {

namespace {

struct Zone
{
    QString name;
    QString places;
    int offset;
};

QString offsetText(int seconds)
{
    const int minutes = std::abs(seconds) / 60;
    return QStringLiteral("UTC%1%2:%3")
        .arg(seconds < 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

void add(QVector<Zone> &zones, const QString &name, const QString &places)
{
    const QTimeZone zone(name.toLatin1());
    if (zone.isValid())
        zones += {name, oneField(places), zone.standardTimeOffset(QDateTime::currentDateTimeUtc())};
}

} // namespace

QByteArray make(const QString &folder)
{
    QHash<QString, QString> countries;
    for (const QStringList &line : tabbedLines(folder + QStringLiteral("/iso3166.tab")))
        countries.insert(line.value(0), line.value(1));
    QVector<Zone> zones;
    for (const QStringList &line : tabbedLines(folder + QStringLiteral("/zone.tab"))) {
        QStringList places = {countries.value(line.value(0), line.value(0)), line.value(3)};
        places.removeAll(QString());
        add(zones, line.value(2), places.join(QStringLiteral(", ")));
    }
    for (const char *name : {"Alaska", "Arizona", "Central", "Eastern", "Hawaii", "Mountain", "Pacific"})
        add(zones, QStringLiteral("US/") + QLatin1String(name),
            QStringLiteral("United States, ") + QLatin1String(name));
    add(zones, QStringLiteral("Etc/UTC"), QStringLiteral("Coordinated Universal Time"));
    std::sort(zones.begin(), zones.end(), [](const Zone &left, const Zone &right) {
        return std::tie(left.offset, left.name) < std::tie(right.offset, right.name);
    });
    QVector<QStringList> entries;
    for (const Zone &zone : qAsConst(zones))
        entries += QStringList{zone.name, offsetText(zone.offset), zone.places};
    return joined(entries);
}

} // namespace ZoneList
