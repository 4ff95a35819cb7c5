// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QVector>

#include <sys/types.h>

/// The running launchers of this machine.
namespace LauncherProcess {

/// Those of the launcher's own user that are ready for SIGUSR1. The signal would end one that has only begun.
QVector<int> all();

/// Whether /proc/PID/status tells of a process of this user that has a handler for SIGUSR1.
bool isReady(const QByteArray &status, uid_t user);

} // namespace LauncherProcess
