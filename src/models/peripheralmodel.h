// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/itemmodel.h"

/// The list of USB devices: name, identifier ("03ba:04ce") and redirection of each.
class PeripheralModel : public ItemModel
{
    Q_OBJECT

public:
    enum Column { Name = Item::Name, Identifier = Item::Address, Redirection = Item::Type };

    explicit PeripheralModel(int columns, QObject *parent = nullptr);

    /// The name is also the tool tip, because it may be too long for its column.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// Changes one text of a top-level row.
    void setText(int row, Column column, const QString &text);
};
