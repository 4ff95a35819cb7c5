// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

#include <QSortFilterProxyModel>

/// The rows of a `LogModel` that are at least so severe and hold a text in their message or category.
class LogFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setText(const QString &text);
    void setLeastSeverity(LogSeverity severity);
    const LogEntry &entry(int row) const;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    QString m_text;
    LogSeverity m_leastSeverity = LogSeverity::Debug;
};
