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

/// Connects the buttons beside a list view: they move and remove its rows, and are enabled for the current
/// row.
class ListContainer : public QObject
{
    Q_OBJECT

public:
    explicit ListContainer(QObject *parent = nullptr);

    void setView(QAbstractItemView *view);
    void setModel(ItemModel *model);
    /// Enables the button while there is a model; its owner handles clicks.
    void setAddButton(QPushButton *button);
    /// Enables the button while a row is current; its owner handles clicks.
    void setEditButton(QPushButton *button);
    void setUpButton(QPushButton *button);
    void setDownButton(QPushButton *button);
    /// With a warning, removing the guarded row asks for confirmation.
    void setRemoveButton(QPushButton *button, const QString &warning);
    /// The name of the guarded row; empty for none.
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
