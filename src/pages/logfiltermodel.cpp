// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/logfiltermodel.h"

#include "pages/logmodel.h"

void LogFilterModel::setText(const QString &text)
{
    m_text = text;
    invalidateFilter();
}

void LogFilterModel::setMinimumSeverity(LogSeverity severity)
{
    m_minimumSeverity = severity;
    invalidateFilter();
}

const LogEntry &LogFilterModel::entry(int row) const
{
    return static_cast<LogModel *>(sourceModel())->entry(mapToSource(index(row, 0)).row());
}

bool LogFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex &) const
{
    const LogEntry &entry = static_cast<LogModel *>(sourceModel())->entry(sourceRow);
    return entry.severity >= m_minimumSeverity
        && (entry.text.contains(m_text, Qt::CaseInsensitive)
            || entry.category.contains(m_text, Qt::CaseInsensitive));
}
