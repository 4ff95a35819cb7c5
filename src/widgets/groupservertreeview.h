// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTreeView>

/// A tree of server groups: each group has an arrow to expand it, and its servers are indented below it.
class GroupServerTreeView : public QTreeView
{
    Q_OBJECT

public:
    static constexpr int rowHeight = 24;

    explicit GroupServerTreeView(QWidget *parent = nullptr);

    /// Draws only the diagonal of the region's bounding rectangle, to show which part would be repainted. The
    /// view itself never calls it.
    void drawTree(QPainter *painter, const QRegion &region) const;

    /// The number of rows above this one, including expanded ones; -1 for an index that is not shown.
    int visualRow(const QModelIndex &index) const;

signals:
    /// The rows have moved; their owner updates its marks.
    void updateParent();

protected:
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
};
