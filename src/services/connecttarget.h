// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/item.h"

#include <QString>
#include <QVector>

/// One server as the configuration lists it.
struct ServerEntry
{
    QString name;
    QString address;
};

/// What a connection is asked for: one server, or a group whose members are tried in their order.
struct ConnectTarget
{
    QString type; ///< "server" or "group"
    QString name;
    QString address;              ///< of a server
    QVector<ServerEntry> members; ///< of a group

    bool isGroup() const { return type == ItemType::group; }
    /// There is something to connect to; a group may still be empty.
    bool isComplete() const { return isGroup() || !address.isEmpty(); }

    static ConnectTarget server(const QString &name, const QString &address)
    {
        return {ItemType::server, name, address, {}};
    }
};
