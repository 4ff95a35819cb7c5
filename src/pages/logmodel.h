// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QAbstractTableModel>
#include <QVector>

/// The lines that the log keeps, a row each, the oldest first. It stands still until it is refreshed.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Severity, Category, Text, ColumnCount };

    /// `ring` outlives the model.
    explicit LogModel(const LogRing &ring, QObject *parent = nullptr);

    /// Takes in what was logged since the last time, and lets go of what the log no longer keeps.
    void refresh();
    const LogEntry &entry(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const LogRing &m_ring;
    QVector<LogEntry> m_entries;
    quint64 m_next = 0;
};
