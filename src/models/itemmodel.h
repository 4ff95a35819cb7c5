// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/item.h"

#include <QAbstractItemModel>
#include <QList>

/// The Qt model of a list or tree view, over a tree of items with an invisible root.
class ItemModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit ItemModel(int columns, QObject *parent = nullptr);
    ~ItemModel() override;

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Always returns false: rows are changed only through the functions below.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// The row of an index; null for an invalid index.
    Item *item(const QModelIndex &index) const;
    /// A top-level row; null if there is no such row.
    Item *topLevelItem(int row) const;

    /// The model takes ownership of appended rows. Position -1 is the end.
    void appendChild(Item *item, int position = -1);
    void appendChildren(const QList<Item *> &items);
    /// Replaces the top-level row with the name and type of `item`; appends `item` if there is none.
    void overwriteChild(Item *item);
    void remItem(const QModelIndex &index);
    void removeByIndex(int row);
    void remAllItems();
    void upItem(const QModelIndex &index);
    void downItem(const QModelIndex &index);
    /// Whether a top-level row has the name and, with `withType`, the type of `item`.
    bool contains(const Item &item, bool withType) const;

protected:
    virtual QVariant decoration(const Item &item) const;

private:
    Item *parentOf(const QModelIndex &parent) const;
    void moveItem(const QModelIndex &index, int step);
    int find(const Item &item, bool withType) const;

    Item m_root;
    int m_columns;
};
