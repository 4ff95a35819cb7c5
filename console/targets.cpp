// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/targets.h"

#include "console/files.h"
#include "console/options.h"

#include "update/terminalservermodule.h"

#include <QHostInfo>

namespace Targets {

namespace {

bool isIPv4(const QHostAddress &address)
{
    return address.protocol() == QAbstractSocket::IPv4Protocol;
}

QHostAddress lookUp(const QString &name)
{
    const QHostAddress literal(name);
    if (isIPv4(literal))
        return literal;
    const QHostInfo found = QHostInfo::fromName(name);
    for (const QHostAddress &address : found.addresses()) {
        if (isIPv4(address))
            return address;
    }
    return {};
}

} // namespace

QStringList parse(const QByteArray &list)
{
    QStringList names;
    for (const QByteArray &line : list.split('\n')) {
        const QString name = QString::fromUtf8(line.split('#').first()).trimmed();
        if (!name.isEmpty())
            names += name;
    }
    return names;
}

Expected<QList<QHostAddress>> named(const Options &options)
{
    QStringList names = options.addresses;
    if (!options.targetsFile.isEmpty()) {
        const auto list = Files::read(options.targetsFile);
        if (!list)
            return Error{list.error()};
        names += parse(*list);
    }
    QList<QHostAddress> devices;
    for (const QString &name : qAsConst(names)) {
        const QHostAddress address = lookUp(name);
        if (address.isNull())
            return Error{QStringLiteral("unknown device: %1").arg(name)};
        if (!devices.contains(address))
            devices += address;
    }
    return devices;
}

Expected<QList<QHostAddress>> broadcasts(const Options &options)
{
    if (!options.broadcast.isEmpty()) {
        const QHostAddress address(options.broadcast);
        if (isIPv4(address))
            return QList<QHostAddress>{address};
        return Error{QStringLiteral("not an IPv4 address: %1").arg(options.broadcast)};
    }
    QList<QString> found;
    TerminalServerModule::getNetworkInfo(nullptr, nullptr, nullptr, &found);
    QList<QHostAddress> addresses;
    for (const QString &address : qAsConst(found))
        addresses += QHostAddress(address);
    if (addresses.isEmpty())
        return Error{QStringLiteral("this machine has no broadcast address")};
    return addresses;
}

} // namespace Targets
