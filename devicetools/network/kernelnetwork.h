// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the kernel knows of an interface. It takes no time and nobody's permission to ask.
namespace KernelNetwork {

const QString eth0 = QStringLiteral("eth0");
const QString wlan0 = QStringLiteral("wlan0");

struct Address
{
    QString address;
    int prefixLength = 0;
};

bool exists(const QString &interface);
/// Administratively up.
bool isOn(const QString &interface);
/// A cable with somebody at its other end; false of an interface that is off.
bool hasCarrier(const QString &interface);
/// Ready for packets: a wireless interface is when it is associated and has proven its key.
bool isReady(const QString &interface);
/// The first IPv4 address.
std::optional<Address> address(const QString &interface);
bool hasAddress(const QString &interface, const QString &address);
/// The gateway of the default route through this interface; empty when there is none.
QString gateway(const QString &interface);
/// The same, in the text of /proc/net/route.
QString gatewayIn(const QByteArray &routes, const QString &interface);

/// Brings the interface up or takes it down. Needs root's rights.
bool turn(const QString &interface, bool on);

} // namespace KernelNetwork
