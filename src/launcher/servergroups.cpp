// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/servergroups.h"

#include "config/keys.h"

namespace ServerGroups {

namespace {

ServerEntry entry(const QJsonObject &server)
{
    return {server.value(Key::serverName).toString(), server.value(Key::serverAddress).toString()};
}

} // namespace

QVector<ServerEntry> members(const QJsonObject &group)
{
    QVector<ServerEntry> result;
    for (const QJsonValue &server : group.value(Key::servers).toArray())
        result += entry(server.toObject());
    return result;
}

ConnectTarget group(const QJsonArray &groups, const QString &name)
{
    for (const QJsonValue &candidate : groups) {
        const QJsonObject object = candidate.toObject();
        if (object.value(Key::groupName).toString() == name)
            return {ItemType::group, name, QString(), members(object)};
    }
    return {ItemType::group, name, QString(), {}};
}

ConnectTarget autoConnectTarget(const QJsonObject &autoconnect, const QJsonArray &groups)
{
    if (autoconnect.value(Key::type).toString() == ItemType::group)
        return group(groups, autoconnect.value(Key::group).toString());
    const ServerEntry server = entry(autoconnect.value(Key::server).toObject());
    return ConnectTarget::server(server.name.isEmpty() ? server.address : server.name, server.address);
}

Item *serverRow(const ServerEntry &server, const QString &icon)
{
    auto *item = new Item(server.name.isEmpty() ? server.address : server.name);
    item->setValue(Item::Address, server.address);
    item->setValue(Item::Type, ItemType::server);
    item->setIcon(icon, icon);
    return item;
}

Item *row(const QJsonObject &group)
{
    auto *item = new Item(group.value(Key::groupName).toString());
    item->setValue(Item::Type, ItemType::group);
    item->setIcon(QStringLiteral(":/images/group.png"), QStringLiteral(":/images/group.png"));
    for (const ServerEntry &server : members(group))
        item->appendChild(serverRow(server, QStringLiteral(":/images/server.png")));
    return item;
}

} // namespace ServerGroups
