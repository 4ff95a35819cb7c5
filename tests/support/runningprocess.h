// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>

/// Whether a process is running. One that has ended has no command line, even where nobody collects it.
inline bool isRunning(int process)
{
    QFile commandLine(QString::fromLatin1("/proc/%1/cmdline").arg(process));
    return commandLine.open(QIODevice::ReadOnly) && !commandLine.readAll().isEmpty();
}
