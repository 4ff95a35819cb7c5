// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// The host's name and its power. Each tool returns a Tool::Status.
namespace HostTools {

/// kt-set-hostname -j | -r
int setHostName(const QStringList &arguments);
/// kt-lulling -s | -r | -S
int lulling(const QStringList &arguments);

/// "kt964-" and the end of the wired interface's hardware address, which is also on the machine's label.
/// Without such an interface, of the machine's identifier.
QString defaultHostName(const QString &interfaces = QStringLiteral("/sys/class/net"),
                        const QString &machineId = QStringLiteral("/etc/machine-id"));
/// Letters, digits and hyphens, up to 63.
bool isDeviceName(const QString &name);

} // namespace HostTools
