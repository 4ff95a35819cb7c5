// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/listcontainer.h"

#include "models/itemmodel.h"
#include "widgets/generaldialog.h"

#include <QAbstractItemView>
#include <QPushButton>

namespace {

void enable(QPushButton *button, bool enabled)
{
    if (button)
        button->setEnabled(enabled);
}

} // namespace

ListContainer::ListContainer(QObject *parent)
    : QObject(parent)
{ }

void ListContainer::setView(QAbstractItemView *view)
{
    m_view = view;
    watchSelection();
}

void ListContainer::setModel(ItemModel *model)
{
    m_model = model;
    watchSelection();
}

/// Waits for both view and model, because a view has no selection model without a model.
void ListContainer::watchSelection()
{
    if (!m_view || !m_model)
        return;
    if (m_view->model() != m_model)
        m_view->setModel(m_model);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ListContainer::updateButtons);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_model, change, this, &ListContainer::updateCurrent);
    connect(m_model, &QAbstractItemModel::modelReset, this, &ListContainer::updateCurrent);
    updateCurrent();
}

void ListContainer::setAddButton(QPushButton *button)
{
    m_addButton = button;
    updateCurrent();
}

void ListContainer::setEditButton(QPushButton *button)
{
    m_editButton = button;
    updateButtons(current());
}

void ListContainer::setUpButton(QPushButton *button)
{
    m_upButton = button;
    connect(button, &QPushButton::clicked, this, &ListContainer::upItem);
    updateCurrent();
}

void ListContainer::setDownButton(QPushButton *button)
{
    m_downButton = button;
    connect(button, &QPushButton::clicked, this, &ListContainer::downItem);
    updateCurrent();
}

void ListContainer::setRemoveButton(QPushButton *button, const QString &warning)
{
    m_removeButton = button;
    m_removeWarning = warning;
    connect(button, &QPushButton::clicked, this, &ListContainer::removeItem);
    updateCurrent();
}

void ListContainer::setGuardedName(const QString &name)
{
    m_guardedName = name;
}

QModelIndex ListContainer::current() const
{
    return m_view && m_view->selectionModel() ? m_view->currentIndex() : QModelIndex();
}

void ListContainer::updateCurrent()
{
    updateButtons(current());
}

void ListContainer::updateButtons(const QModelIndex &current)
{
    const int rows = m_model ? m_model->rowCount(current.parent()) : 0;
    enable(m_addButton, m_model);
    enable(m_editButton, current.isValid());
    enable(m_upButton, current.isValid() && current.row() > 0);
    enable(m_downButton, current.isValid() && current.row() + 1 < rows);
    enable(m_removeButton, current.isValid());
}

void ListContainer::upItem()
{
    if (!m_model || !current().isValid())
        return;
    m_model->upItem(current());
    updateCurrent();
    emit changed();
}

void ListContainer::downItem()
{
    if (!m_model || !current().isValid())
        return;
    m_model->downItem(current());
    updateCurrent();
    emit changed();
}

bool ListContainer::mayRemove(const QModelIndex &index) const
{
    const Item *item = m_model->item(index);
    const bool guarded = !m_removeWarning.isEmpty() && !m_guardedName.isEmpty()
        && item->getValue(Item::Name) == m_guardedName;
    return !guarded || GeneralDialog::ask(m_view->window(), tr("Warning"), m_removeWarning);
}

void ListContainer::removeItem()
{
    // The rows may change while the question is open.
    const QPersistentModelIndex row = current();
    if (!m_model || !row.isValid() || !mayRemove(row) || !m_model || !row.isValid())
        return;
    m_model->remItem(row);
    updateCurrent();
    emit changed();
}
