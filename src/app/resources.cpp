// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/resources.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QStyleFactory>

// Q_INIT_RESOURCE declares what it calls, and so cannot stand in a namespace.
static void registerBundle()
{
    Q_INIT_RESOURCE(images);
    Q_INIT_RESOURCE(style);
}

namespace Resources {

void apply(QApplication &application)
{
    registerBundle();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/app.png")));
    QFile sheet(QStringLiteral(":/style.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace Resources
