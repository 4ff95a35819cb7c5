// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QSortFilterProxyModel>

/// Filters a `LogModel` by a minimum severity and by a text in message or category.
class LogFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setText(const QString &text);
    void setMinimumSeverity(LogSeverity severity);
    const LogEntry &entry(int row) const;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    QString m_text;
    LogSeverity m_minimumSeverity = LogSeverity::Debug;
};
