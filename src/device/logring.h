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
    /// The entry as one line of text: time with UTC offset, severity, category, text.
    QString line() const;
};

/// Consecutive lines of the log, numbered from the start of the program.
struct LogLines
{
    quint64 first = 0;
    QVector<LogEntry> entries;
};

/// The last lines of the program's log. It is locked because the framework's messages come from any thread.
class LogRing
{
public:
    static constexpr int capacity = 5000;
    /// The number of characters kept of a line.
    static constexpr int longestLine = 1000;

    LogRing();
    LogRing(const LogRing &) = delete;
    LogRing &operator=(const LogRing &) = delete;

    /// Adds an entry for each line of a text and removes the oldest entries. Control characters become
    /// blanks.
    void append(LogSeverity severity, const QString &category, const QString &text);

    /// The kept lines from number `first` on. The next call starts at `first + entries.size()` of the result;
    /// there is no notification of new lines.
    LogLines since(quint64 first) const;

private:
    mutable QMutex m_mutex;
    QVector<LogEntry> m_entries; ///< line number n is at n % capacity
    quint64 m_written = 0;
};
