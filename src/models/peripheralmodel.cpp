// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "models/peripheralmodel.h"

PeripheralModel::PeripheralModel(int columns, QObject *parent)
    : ItemModel(columns, parent)
{ }

QVariant PeripheralModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::ToolTipRole && index.column() == Name)
        return ItemModel::data(index, Qt::DisplayRole);
    return ItemModel::data(index, role);
}

QVariant PeripheralModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case Name:
        return tr("Name");
    case Identifier:
        return tr("VID:PID");
    case Redirection:
        return tr("Redirection");
    default:
        return QVariant();
    }
}

void PeripheralModel::setText(int row, Column column, const QString &text)
{
    Item *item = topLevelItem(row);
    if (!item || item->getValue(column) == text)
        return;
    item->setValue(column, text);
    const QModelIndex changed = index(row, column);
    emit dataChanged(changed, changed);
}
