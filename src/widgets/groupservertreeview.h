// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTreeView>

/// Draws groups of servers: groups with an arrow to unfold them, their servers indented below.
class GroupServerTreeView : public QTreeView
{
    Q_OBJECT

public:
    static constexpr int rowHeight = 24;

    explicit GroupServerTreeView(QWidget *parent = nullptr);

    /// Draws the diagonal of the region's bounding rectangle and nothing else: it shows which part of the
    /// view would be repainted. Painting the view does not go through it.
    void drawTree(QPainter *painter, const QRegion &region) const;

    /// How many rows, unfolded ones included, stand above this one; -1 for an index that is not shown.
    int visualRow(const QModelIndex &index) const;

signals:
    /// The rows have moved under whatever marks them.
    void updateParent();

protected:
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};
