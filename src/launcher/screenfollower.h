// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QRect>

class QScreen;
class QWidget;

/// Keeps a window as large as the primary screen, whatever becomes of that: another resolution, another
/// monitor. Without a window manager nobody else does. Open dialogs are brought back onto the screen.
class ScreenFollower : public QObject
{
    Q_OBJECT

public:
    /// The window outlives the object.
    explicit ScreenFollower(QWidget &window, QObject *parent = nullptr);

    /// Where a dialog stands on a screen: centred, when it would not be whole where it is.
    static QRect placed(const QRect &dialog, const QRect &screen);

private:
    void watch(QScreen *screen);
    void follow();

    QWidget &m_window;
};
