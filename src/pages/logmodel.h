// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QAbstractTableModel>
#include <QVector>

/// Lists the lines in the log's ring, oldest first. Changes only on `refresh`.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Severity, Category, Text, ColumnCount };

    /// `ring` must outlive the model.
    explicit LogModel(const LogRing &ring, QObject *parent = nullptr);

    /// Appends the lines logged since the last call, and removes those that the ring has dropped.
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
