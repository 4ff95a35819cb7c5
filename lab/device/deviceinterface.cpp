// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/deviceinterface.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QNetworkAddressEntry>

DeviceInterface::DeviceInterface(const DeviceRoot &root, const QString &prefix, const QString &section,
                                 const Addressing &lease)
    : m_root(root)
    , m_prefix(prefix)
    , m_section(section)
    , m_lease(lease)
{ }

DeviceInterface DeviceInterface::wired(const DeviceRoot &root)
{
    return {root,
            QStringLiteral("wired-"),
            QStringLiteral("eth"),
            {QStringLiteral("dhcp"), QStringLiteral("10.77.0.10"), QStringLiteral("255.255.255.0"),
             QStringLiteral("10.77.0.1")}};
}

DeviceInterface DeviceInterface::wireless(const DeviceRoot &root)
{
    return {root,
            QStringLiteral("wireless-"),
            QStringLiteral("wlan"),
            {QStringLiteral("dhcp"), QStringLiteral("10.77.1.10"), QStringLiteral("255.255.255.0"),
             QStringLiteral("10.77.1.1")}};
}

QString DeviceInterface::get(const char *fact) const
{
    return m_root.state(m_prefix + QLatin1String(fact));
}

void DeviceInterface::set(const char *fact, const QString &value) const
{
    m_root.setState(m_prefix + QLatin1String(fact), value);
}

Addressing DeviceInterface::addressing() const
{
    return {get("type"), get("address"), get("netmask"), get("gateway")};
}

void DeviceInterface::connect(const Addressing &addressing) const
{
    set("type", addressing.type);
    set("gateway", addressing.gateway);
    setAddress(addressing.address, addressing.netmask);
    chooseDefaultRoute(m_root);
}

void DeviceInterface::disconnect() const
{
    set("gateway", QString());
    setAddress(QString(), QString());
    chooseDefaultRoute(m_root);
}

void DeviceInterface::setAddress(const QString &address, const QString &netmask) const
{
    set("address", address);
    set("netmask", netmask);
}

QJsonObject DeviceInterface::configuration() const
{
    const QByteArray stored = m_root.state(QStringLiteral("network.json")).toUtf8();
    const QJsonObject interfaces
        = QJsonDocument::fromJson(stored).object().value(QLatin1String("interfaces")).toObject();
    return interfaces.value(m_section).toObject();
}

Addressing DeviceInterface::wanted() const
{
    const QJsonObject wanted = configuration();
    if (wanted.value(QLatin1String("type")).toString() != QLatin1String("static"))
        return m_lease;
    QString address = wanted.value(QLatin1String("IP address")).toString();
    if (address.isEmpty())
        address = wanted.value(QLatin1String("Ip address")).toString();
    return {QStringLiteral("static"), address, wanted.value(QLatin1String("network mask")).toString(),
            wanted.value(QLatin1String("default gateway")).toString()};
}

bool DeviceInterface::isEnabled() const
{
    const QJsonObject wanted = configuration();
    return wanted.isEmpty()
        || (wanted.value(QLatin1String("enabled")).toBool()
            && wanted.value(QLatin1String("type")).toString() != QLatin1String("off"));
}

void chooseDefaultRoute(const DeviceRoot &root)
{
    QString gateway;
    for (const DeviceInterface &interface : {DeviceInterface::wired(root), DeviceInterface::wireless(root)}) {
        const Addressing now = interface.addressing();
        if (gateway.isEmpty() && !now.address.isEmpty())
            gateway = now.gateway;
    }
    root.setState(QStringLiteral("default-route"), gateway);
}

QString netmaskOf(int prefixLength)
{
    if (prefixLength < 0 || prefixLength > 32)
        return {};
    QNetworkAddressEntry entry;
    entry.setIp(QHostAddress(QHostAddress::LocalHost));
    entry.setPrefixLength(prefixLength);
    return entry.netmask().toString();
}

int prefixLengthOf(const QString &netmask)
{
    QNetworkAddressEntry entry;
    entry.setIp(QHostAddress(QHostAddress::LocalHost));
    entry.setNetmask(QHostAddress(netmask));
    return entry.prefixLength();
}
