// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// What every Qt program pays before it has done anything: a window that shows one label.

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
