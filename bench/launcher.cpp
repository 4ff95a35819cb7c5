// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// Measures the launcher. The first argument selects the task after the first paint: none, "sessions",
// "servers" or "user".

#include "launchertasks.h"
#include "paintwatch.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

void startTask()
{
    const QString task = QCoreApplication::arguments().value(1);
    if (task == QLatin1String("sessions"))
        Bench::runSessions();
    else if (task == QLatin1String("servers"))
        Bench::showServers();
    else if (task == QLatin1String("user"))
        Bench::playUser();
    else
        QCoreApplication::exit();
}

} // namespace

void Bench::loaded() { }

void Bench::painted()
{
    QTimer::singleShot(0, QCoreApplication::instance(), startTask);
}
