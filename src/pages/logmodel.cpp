// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/logmodel.h"

#include <QColor>

#include <algorithm>

namespace {

QVariant colourOf(LogSeverity severity)
{
    if (severity >= LogSeverity::Critical)
        return QColor(0xB3, 0x26, 0x1E);
    if (severity == LogSeverity::Warning)
        return QColor(0x8A, 0x4B, 0x00);
    return QVariant();
}

} // namespace

LogModel::LogModel(const LogRing &ring, QObject *parent)
    : QAbstractTableModel(parent)
    , m_ring(ring)
{ }

void LogModel::refresh()
{
    const LogLines fresh = m_ring.since(m_next);
    m_next = fresh.first + static_cast<quint64>(fresh.entries.size());
    if (fresh.entries.isEmpty())
        return;
    const int surplus
        = std::min(m_entries.size(), m_entries.size() + fresh.entries.size() - LogRing::capacity);
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_entries.remove(0, surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), m_entries.size(), m_entries.size() + fresh.entries.size() - 1);
    m_entries += fresh.entries;
    endInsertRows();
}

const LogEntry &LogModel::entry(int row) const
{
    return m_entries.at(row);
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_entries.size();
}

int LogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const LogEntry &entry = m_entries.at(index.row());
    if (role == Qt::ForegroundRole)
        return colourOf(entry.severity);
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (index.column()) {
    case Time:
        return entry.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
    case Severity:
        return entry.severityName();
    case Category:
        return entry.category;
    default:
        return entry.text;
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case Time:
        return tr("Time");
    case Severity:
        return tr("Severity");
    case Category:
        return tr("Category");
    default:
        return tr("Message");
    }
}
