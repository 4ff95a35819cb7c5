// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/item.h"

#include <QAbstractItemModel>
#include <QList>

/// The rows of one list or tree view: a Qt model over a tree of items under an invisible root.
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
    /// Rows are edited through the operations below only: changes nothing and answers false.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// The row behind an index; null for the invalid one.
    Item *item(const QModelIndex &index) const;
    /// A top-level row; null when there is no such row.
    Item *topLevelItem(int row) const;

    /// The model takes ownership of what is appended. A position of -1 is the end.
    void appendChild(Item *item, int position = -1);
    void appendChildren(const QList<Item *> &items);
    /// Replaces the top-level row equal to `item` by name and type; appends `item` when there is none.
    void overwriteChild(Item *item);
    void remItem(const QModelIndex &index);
    void removeByIndex(int row);
    void remAllItems();
    void upItem(const QModelIndex &index);
    void downItem(const QModelIndex &index);
    /// True when a top-level row equals `item` by name and, with `withType`, by type.
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
