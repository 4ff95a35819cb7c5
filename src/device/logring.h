// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QMutex>
#include <QString>
#include <QVector>

/// From the least to the most severe.
enum class LogSeverity { Debug, Information, Warning, Critical, Fatal };

struct LogEntry
{
    QDateTime time; ///< UTC
    LogSeverity severity = LogSeverity::Debug;
    QString category;
    QString text;

    /// The severity as one lower-case word.
    QString severityName() const;
    /// The entry as one line of text: time with its offset, severity, category, text.
    QString line() const;
};

/// Some lines of the log, numbered from the start of the program.
struct LogLines
{
    quint64 first = 0;
    QVector<LogEntry> entries;
};

/// The last lines of the program's log. The one object that several threads share: the framework's messages
/// come from whichever thread has something to say.
class LogRing
{
public:
    static constexpr int capacity = 5000;
    /// How many characters of a line are kept.
    static constexpr int longestLine = 1000;

    LogRing();
    LogRing(const LogRing &) = delete;
    LogRing &operator=(const LogRing &) = delete;

    /// Adds a text, an entry for each of its lines; the oldest entries make room. Control characters become
    /// blanks.
    void append(LogSeverity severity, const QString &category, const QString &text);

    /// The lines from number `first` on, as far as they are still kept. A reader asks again from
    /// `first + entries.size()` of the answer, as often as it likes to: no line wakes it.
    LogLines since(quint64 first) const;

private:
    mutable QMutex m_mutex;
    QVector<LogEntry> m_entries; ///< line number n stands at n % capacity
    quint64 m_written = 0;
};
