// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>

/// The part of a screen with this object name.
template <typename Part = QWidget>
Part *part(const QObject &screen, const QString &name)
{
    auto *found = screen.findChild<Part *>(name);
    if (!found)
        qFatal("the screen has no %s", qPrintable(name));
    return found;
}

inline void press(const QObject &screen, const QString &button)
{
    part<QAbstractButton>(screen, button)->click();
}

/// Makes a row of a list current.
inline void choose(const QObject &screen, const QString &list, int row)
{
    auto *view = part<QAbstractItemView>(screen, list);
    view->setCurrentIndex(view->model()->index(row, 0));
}
