// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connecttarget.h"

#include <QJsonArray>
#include <QJsonObject>

/// Reading "server groups" and the auto-connect target from the configuration document. Entries of another
/// type than the document's schema says read as empty.
namespace ServerGroups {

/// The members of one group object, in the order in which it lists them.
QVector<ServerEntry> members(const QJsonObject &group);
/// The first group of that name; one without members when there is none.
ConnectTarget group(const QJsonArray &groups, const QString &name);
/// The target of an "autoconnect" object.
ConnectTarget autoConnectTarget(const QJsonObject &autoconnect, const QJsonArray &groups);
/// The group as a list row with its servers as children. The caller owns it.
Item *row(const QJsonObject &group);
/// A server as a list row. The caller owns it.
Item *serverRow(const ServerEntry &server, const QString &icon);

} // namespace ServerGroups
