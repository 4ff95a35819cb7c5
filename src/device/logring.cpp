// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/logring.h"

#include <QMutexLocker>
#include <QStringList>

#include <algorithm>

namespace {

const QChar ellipsis(0x2026);

QString kept(const QString &line)
{
    QString result = line;
    if (result.size() > LogRing::longestLine) {
        result.truncate(LogRing::longestLine - 1);
        if (result.at(result.size() - 1).isHighSurrogate())
            result.chop(1);
        result += ellipsis;
    }
    const auto isControl = [](QChar character) {
        return character.category() == QChar::Other_Control;
    };
    std::replace_if(result.begin(), result.end(), isControl, QLatin1Char(' '));
    return result;
}

/// The last lines of a text, at most as many as the ring holds.
QStringList linesOf(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.size() > 1 && lines.last().isEmpty())
        lines.removeLast();
    return lines.mid(std::max(0, lines.size() - LogRing::capacity));
}

} // namespace

QString LogEntry::severityName() const
{
    switch (severity) {
    case LogSeverity::Debug:
        return QStringLiteral("debug");
    case LogSeverity::Information:
        return QStringLiteral("info");
    case LogSeverity::Warning:
        return QStringLiteral("warning");
    case LogSeverity::Critical:
        return QStringLiteral("critical");
    case LogSeverity::Fatal:
        break;
    }
    return QStringLiteral("fatal");
}

QString LogEntry::line() const
{
    const QDateTime local = time.toLocalTime();
    return QStringLiteral("%1 %2 %3: ")
               .arg(local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs), severityName(),
                    category)
        + text;
}

LogRing::LogRing()
{
    m_entries.reserve(capacity);
}

void LogRing::append(LogSeverity severity, const QString &category, const QString &text)
{
    const QDateTime time = QDateTime::currentDateTimeUtc();
    const QStringList lines = linesOf(text);
    const QMutexLocker lock(&m_mutex);
    for (const QString &line : lines) {
        LogEntry entry{time, severity, category, kept(line)};
        if (m_entries.size() < capacity)
            m_entries.append(std::move(entry));
        else
            m_entries[static_cast<int>(m_written % capacity)] = std::move(entry);
        ++m_written;
    }
}

LogLines LogRing::since(quint64 first) const
{
    const QMutexLocker lock(&m_mutex);
    const quint64 oldest = m_written - static_cast<quint64>(m_entries.size());
    LogLines lines{std::clamp(first, oldest, m_written), {}};
    lines.entries.reserve(static_cast<int>(m_written - lines.first));
    for (quint64 number = lines.first; number < m_written; ++number)
        lines.entries.append(m_entries.at(static_cast<int>(number % capacity)));
    return lines;
}
