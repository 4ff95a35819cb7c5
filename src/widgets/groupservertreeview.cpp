// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/groupservertreeview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace {

const QColor selectedRow(0xE6, 0xF1, 0xD5);
const QColor absentText(0x5C, 0x5C, 0x5C);

/// All rows have the same height, as the frame around the selected row requires.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {QStyledItemDelegate::sizeHint(option, index).width(), GroupServerTreeView::rowHeight};
    }

protected:
    /// Rows in italics name what is not there now.
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->font.italic()) {
            option->palette.setColor(QPalette::Text, absentText);
            option->palette.setColor(QPalette::HighlightedText, absentText);
        }
    }
};

} // namespace

GroupServerTreeView::GroupServerTreeView(QWidget *parent)
    : QTreeView(parent)
{
    setItemDelegate(new RowDelegate(this));
    setUniformRowHeights(true);
    setHeaderHidden(true);
    setVerticalScrollMode(ScrollPerItem);
    setEditTriggers(NoEditTriggers);
    setIndentation(20);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QTreeView::expanded, this, &GroupServerTreeView::updateParent);
    connect(this, &QTreeView::collapsed, this, &GroupServerTreeView::updateParent);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &GroupServerTreeView::updateParent);
}

int GroupServerTreeView::visualRow(const QModelIndex &index) const
{
    if (!index.isValid() || visualRect(index).isNull())
        return -1;
    // One row is one step of the scroll bar, so its value is the number of the first visible row.
    const int top = visualRect(index).top();
    return verticalScrollBar()->value() + (top >= 0 ? top / rowHeight : (top - rowHeight + 1) / rowHeight);
}

void GroupServerTreeView::drawTree(QPainter *painter, const QRegion &region) const
{
    const QRect bounds = region.boundingRect();
    painter->drawLine(bounds.topLeft(), bounds.bottomRight() + QPoint(1, 1));
}

void GroupServerTreeView::drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const
{
    const bool childlessTopLevel = !index.parent().isValid() && !model()->hasChildren(index);
    if (!childlessTopLevel)
        QTreeView::drawBranches(painter, rect, index);
}

void GroupServerTreeView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
{
    // The indentation has the colour of the row too.
    if (selectionModel() && selectionModel()->isSelected(index))
        painter->fillRect(QRect(0, option.rect.y(), viewport()->width(), option.rect.height()), selectedRow);
    QTreeView::drawRow(painter, option, index);
}

void GroupServerTreeView::keyPressEvent(QKeyEvent *event)
{
    // A view that gets the focus makes its first row current without selecting it; the first arrow key
    // selects it.
    const bool arrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (arrow && currentIndex().flags().testFlag(Qt::ItemIsSelectable)
        && selectionModel()->selectedIndexes().isEmpty())
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        QTreeView::keyPressEvent(event);
}

void GroupServerTreeView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    emit updateParent();
}
