// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// A window with one label: the base cost of every Qt program.

#include "paintwatch.h"

#include <QApplication>
#include <QLabel>

void Bench::loaded() { }

void Bench::painted()
{
    QCoreApplication::exit();
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QLabel label(QStringLiteral("KT964"));
    label.show();
    return QApplication::exec();
}
