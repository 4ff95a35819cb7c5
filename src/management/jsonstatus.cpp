// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/jsonstatus.h"

#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/identity.h"
#include "device/paths.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcStatus, "kt.management.status")

namespace {

/// A description of a session is a few hundred bytes.
constexpr qint64 connectionLimit = 64 * 1024;
const QString noAddress = QStringLiteral("0.0.0.0");

QString known(const QString &address)
{
    return address.isEmpty() ? noAddress : address;
}

QString typeOf(const NetworkProperty &interface)
{
    const QString fixed = QStringLiteral("static");
    return interface.typeIp() == fixed ? fixed : QStringLiteral("dhcp");
}

} // namespace

JSONStatus::JSONStatus(const InterfaceFacts &interfaces)
{
    ReadFWVersion();
    GetDeviceSN();
    GetDataFromConfig();
    GetNetworkStatus(interfaces);
    GetConnectionStatus();
    CreateBaseJSON();
}

void JSONStatus::ReadFWVersion()
{
    const Identity::Firmware firmware = Identity::firmware();
    m_firmwareVersion = firmware.version;
    m_firmwareName = firmware.name;
}

void JSONStatus::GetDeviceSN()
{
    m_serialNumber = Identity::serialNumber();
}

void JSONStatus::GetDataFromConfig()
{
    JsonModule configuration(QStringLiteral("config.json"), true);
    configuration.readContent();
    const QJsonObject root = configuration.getDocument().object();
    if (root.isEmpty()) {
        qCDebug(lcStatus).noquote() << "no document in" << configuration.filePath();
        return;
    }
    const QJsonObject general = root.value(Key::general).toObject();
    m_deviceName = general.value(Key::deviceName).toString(m_deviceName);
    m_passwordHash = general.value(Key::setupPasswordHash).toString();
    m_passwordEnabled = general.value(Key::setupPasswordEnabled).toBool();
    m_configVersion = root.value(Key::firmwareInfo).toObject().value(Key::configurationVersion).toInt();
}

void JSONStatus::GetNetworkStatus(const InterfaceFacts &interfaces)
{
    const NetworkProperty &wired = interfaces.wired;
    const NetworkProperty &wireless = interfaces.wireless;
    m_wiredIp = known(wired.ip());
    m_wiredMac = wired.mac();
    m_wirelessIp = known(wireless.ip());
    m_wirelessMac = wireless.mac();
    const bool byAir = m_wiredIp == noAddress && m_wirelessIp != noAddress;
    m_interface = byAir ? QStringLiteral("wlan0") : QStringLiteral("eth0");
    const NetworkProperty &shown = byAir ? wireless : wired;
    m_netmask = known(shown.netmask());
    m_gateway = known(shown.gateway());
    m_ipType = typeOf(shown);
    m_wiredNetmask = known(wired.netmask());
    m_wiredIpType = typeOf(wired);
    m_wirelessIpType = typeOf(wireless);
}

void JSONStatus::GetConnectionStatus()
{
    QFile file(Paths::connection());
    if (!QFileInfo(file).isFile())
        return;
    m_connectionStatus = QStringLiteral("connected");
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.read(connectionLimit) : QByteArray();
    const QJsonValue session = QJsonDocument::fromJson(text).object().value(QLatin1String("zClient"));
    const QString address = session[Key::server][Key::address].toString();
    if (!address.isEmpty())
        m_servers += address;
}

void JSONStatus::CreateBaseJSON()
{
    const QVariantMap firmware = {{Key::configurationVersion, m_configVersion},
                                  {Key::deviceFamily, QStringLiteral("KT")},
                                  {Key::deviceModel, QStringLiteral("KT964")},
                                  {QStringLiteral("firmware version"), m_firmwareVersion},
                                  {QStringLiteral("ZMP client version"), QStringLiteral("N/A")}};
    const QVariantMap device = {{QStringLiteral("serial number"), m_serialNumber},
                                {Key::deviceName, m_deviceName},
                                {Key::setupPasswordEnabled, m_passwordEnabled},
                                {Key::setupPasswordHash, m_passwordHash}};
    const QVariantMap network = {{Key::ipAddress, isWired() ? m_wiredIp : m_wirelessIp},
                                 {Key::networkMask, m_netmask},
                                 {Key::defaultGateway, m_gateway},
                                 {QStringLiteral("IP type"), m_ipType},
                                 {QStringLiteral("MAC"), isWired() ? m_wiredMac : m_wirelessMac},
                                 {QStringLiteral("interface"), m_interface}};
    const QVariantMap connection
        = {{QStringLiteral("status"), m_connectionStatus}, {QStringLiteral("Corvid Servers"), m_servers}};
    m_report = QJsonDocument::fromVariant(QVariantMap({{Key::firmwareInfo, firmware},
                                                       {QStringLiteral("device info"), device},
                                                       {QStringLiteral("network info"), network},
                                                       {QStringLiteral("connection info"), connection}}));
}

bool JSONStatus::isWired() const
{
    return m_interface.startsWith(QLatin1String("eth"));
}

QByteArray JSONStatus::get() const
{
    return m_report.toJson(QJsonDocument::Compact);
}

QString JSONStatus::getFWVersion() const
{
    return m_firmwareVersion;
}

QString JSONStatus::getFWName() const
{
    return m_firmwareName;
}

QString JSONStatus::getSerialNumber() const
{
    return m_serialNumber;
}

int JSONStatus::getConfigVersion() const
{
    return m_configVersion;
}

QString JSONStatus::getDeviceName() const
{
    return m_deviceName;
}

QString JSONStatus::getIpAddress() const
{
    return m_wiredIp;
}

QString JSONStatus::getIpNetmask() const
{
    return m_wiredNetmask;
}

QString JSONStatus::getGateway() const
{
    return m_gateway;
}

QString JSONStatus::getMacAddress() const
{
    return m_wiredMac;
}

QString JSONStatus::getWifiIpAddress() const
{
    return m_wirelessIp;
}

QString JSONStatus::getWmacAddress() const
{
    return m_wirelessMac;
}

QString JSONStatus::getIPType() const
{
    return m_wirelessIpType;
}

QString JSONStatus::getWiredIPType() const
{
    return m_wiredIpType;
}

QString JSONStatus::getIFaceName() const
{
    return m_interface;
}
