// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/screenfollower.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>

ScreenFollower::ScreenFollower(QWidget &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
    for (QScreen *screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen *screen) {
        watch(screen);
        follow();
    });
    // The screen that goes is still listed while the signal is sent.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenFollower::follow, Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &ScreenFollower::follow);
    follow();
}

void ScreenFollower::watch(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &ScreenFollower::follow);
}

QRect ScreenFollower::placed(const QRect &dialog, const QRect &screen)
{
    QRect result = dialog;
    if (!screen.contains(dialog))
        result.moveCenter(screen.center());
    return result;
}

void ScreenFollower::follow()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    if (!primary)
        return;
    m_window.setGeometry(primary->geometry());
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && qobject_cast<QDialog *>(widget))
            widget->move(placed(widget->frameGeometry(), primary->geometry()).topLeft());
    }
}
