// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QStringList>

#include <optional>

/// Messages that device scripts send to the launcher: one JSON object in a file, and a signal.
namespace LauncherMessage {

/// The message that the arguments of kt-message name; nothing when they name none.
std::optional<QJsonObject> fromArguments(const QStringList &arguments);
/// "link", "connected" or "no link" for "eth0" or "wlan0".
QJsonObject networkStatus(const QString &interface, const QString &message);

/// Leaves the message where the launcher looks for it, and signals every launcher that is ready for one.
/// There may be none. False when the message cannot be written.
bool send(const QJsonObject &message);

} // namespace LauncherMessage
