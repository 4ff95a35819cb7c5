// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QString>

class ItemModel;
class QAbstractItemView;
class QPushButton;

/// Lets the buttons beside a list view move and remove its rows, and enables them as the current row allows.
class ListContainer : public QObject
{
    Q_OBJECT

public:
    explicit ListContainer(QObject *parent = nullptr);

    void setView(QAbstractItemView *view);
    void setModel(ItemModel *model);
    /// The button is enabled while there is a model; its owner decides what it adds.
    void setAddButton(QPushButton *button);
    /// The button is enabled while a row is chosen; its owner decides what it edits.
    void setEditButton(QPushButton *button);
    void setUpButton(QPushButton *button);
    void setDownButton(QPushButton *button);
    /// With a warning, removing the guarded row asks first.
    void setRemoveButton(QPushButton *button, const QString &warning);
    /// The name of the row that is not removed without a question; empty for none.
    void setGuardedName(const QString &name);

public slots:
    void upItem();
    void downItem();
    void removeItem();
    void updateButtons(const QModelIndex &current);

signals:
    /// Rows were moved or removed.
    void changed();

private:
    QModelIndex current() const;
    void watchSelection();
    void updateCurrent();
    bool mayRemove(const QModelIndex &index) const;

    QPointer<QAbstractItemView> m_view;
    QPointer<ItemModel> m_model;
    QPointer<QPushButton> m_addButton;
    QPointer<QPushButton> m_editButton;
    QPointer<QPushButton> m_upButton;
    QPointer<QPushButton> m_downButton;
    QPointer<QPushButton> m_removeButton;
    QString m_removeWarning;
    QString m_guardedName;
};
