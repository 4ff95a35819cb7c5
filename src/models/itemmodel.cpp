// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "models/itemmodel.h"

#include <QFont>

ItemModel::ItemModel(int columns, QObject *parent)
    : QAbstractItemModel(parent)
    , m_root(QStringLiteral("ROOT"))
    , m_columns(columns)
{ }

ItemModel::~ItemModel() = default;

Item *ItemModel::item(const QModelIndex &index) const
{
    return index.isValid() && index.model() == this ? static_cast<Item *>(index.internalPointer()) : nullptr;
}

Item *ItemModel::topLevelItem(int row) const
{
    return m_root.child(row);
}

Item *ItemModel::parentOf(const QModelIndex &parent) const
{
    Item *found = item(parent);
    return found ? found : const_cast<Item *>(&m_root);
}

QModelIndex ItemModel::index(int row, int column, const QModelIndex &parent) const
{
    Item *child = column >= 0 && column < m_columns ? parentOf(parent)->child(row) : nullptr;
    return child ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex ItemModel::parent(const QModelIndex &child) const
{
    const Item *found = item(child);
    Item *parent = found ? found->parentItem() : nullptr;
    return !parent || parent == &m_root ? QModelIndex() : createIndex(parent->row(), 0, parent);
}

int ItemModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : parentOf(parent)->childCount();
}

int ItemModel::columnCount(const QModelIndex &) const
{
    return m_columns;
}

QVariant ItemModel::data(const QModelIndex &index, int role) const
{
    const Item *found = item(index);
    if (!found)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return found->getValue(index.column());
    case Qt::DecorationRole:
        return index.column() == Item::Name ? decoration(*found) : QVariant();
    case Qt::FontRole: {
        if (!found->isItalic())
            return QVariant();
        QFont font;
        font.setItalic(true);
        return font;
    }
    default:
        return QVariant();
    }
}

QVariant ItemModel::decoration(const Item &item) const
{
    return item.hasIcon() ? QVariant(item.itemIcon()) : QVariant();
}

bool ItemModel::setData(const QModelIndex &, const QVariant &, int)
{
    return false;
}

Qt::ItemFlags ItemModel::flags(const QModelIndex &index) const
{
    const Item *found = item(index);
    if (!found)
        return Qt::NoItemFlags;
    return found->isHeading() ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

void ItemModel::appendChild(Item *item, int position)
{
    if (!item)
        return;
    const int row = position < 0 || position > m_root.childCount() ? m_root.childCount() : position;
    beginInsertRows(QModelIndex(), row, row);
    m_root.insertChild(row, item);
    endInsertRows();
}

void ItemModel::appendChildren(const QList<Item *> &items)
{
    if (items.isEmpty())
        return;
    const int first = m_root.childCount();
    beginInsertRows(QModelIndex(), first, first + items.size() - 1);
    for (Item *item : items)
        m_root.appendChild(item);
    endInsertRows();
}

void ItemModel::overwriteChild(Item *item)
{
    const int row = item ? find(*item, true) : -1;
    if (row >= 0)
        removeByIndex(row);
    appendChild(item, row);
}

void ItemModel::remItem(const QModelIndex &index)
{
    const Item *found = item(index);
    if (!found)
        return;
    const int row = index.row();
    const QModelIndex above = parent(index);
    beginRemoveRows(above, row, row);
    parentOf(above)->removeChild(row);
    endRemoveRows();
}

void ItemModel::removeByIndex(int row)
{
    remItem(index(row, 0));
}

void ItemModel::remAllItems()
{
    beginResetModel();
    m_root.removeChildren();
    endResetModel();
}

void ItemModel::upItem(const QModelIndex &index)
{
    moveItem(index, -1);
}

void ItemModel::downItem(const QModelIndex &index)
{
    moveItem(index, 1);
}

void ItemModel::moveItem(const QModelIndex &index, int step)
{
    if (!item(index))
        return;
    const QModelIndex above = parent(index);
    const int row = index.row();
    const int target = row + step;
    if (target < 0 || target >= rowCount(above))
        return;
    beginMoveRows(above, row, row, above, step > 0 ? target + 1 : target);
    parentOf(above)->swapChild(row, target);
    endMoveRows();
}

int ItemModel::find(const Item &item, bool withType) const
{
    for (int row = 0; row < m_root.childCount(); ++row) {
        if (!m_root.child(row)->compare(item, withType))
            return row;
    }
    return -1;
}

bool ItemModel::contains(const Item &item, bool withType) const
{
    return find(item, withType) >= 0;
}
