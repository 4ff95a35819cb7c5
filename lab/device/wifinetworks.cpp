// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/wifinetworks.h"

#include "lab-device/deviceinterface.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace {

/// Members of a network's entry that a scan does not show.
constexpr const char *secrets[] = {"hidden", "key", "user", "password", "ca certificate"};
const QString certificates = QStringLiteral("/var/lib/kt964/certificates/");

QString text(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

} // namespace

WifiNetworks::WifiNetworks(const DeviceRoot &root)
    : m_root(root)
{ }

QJsonArray WifiNetworks::networks() const
{
    return QJsonDocument::fromJson(m_root.state(QStringLiteral("wifi-list.json")).toUtf8()).array();
}

QString WifiNetworks::scan() const
{
    QString list = m_root.state(QStringLiteral("wifi-list.json"));
    if (!QJsonDocument::fromJson(list.toUtf8()).isArray())
        return list;
    QJsonArray visible;
    const QJsonArray all = networks();
    for (const QJsonValue &value : all) {
        QJsonObject network = value.toObject();
        if (network.value(QLatin1String("hidden")).toBool())
            continue;
        for (const char *secret : secrets)
            network.remove(QLatin1String(secret));
        visible.append(network);
    }
    return QString::fromUtf8(QJsonDocument(visible).toJson()).trimmed();
}

std::optional<QJsonObject> WifiNetworks::find(const QString &ssid) const
{
    const QJsonArray all = networks();
    for (const QJsonValue &value : all)
        if (text(value.toObject(), "ssid") == ssid)
            return value.toObject();
    return std::nullopt;
}

QString WifiNetworks::currentSsid() const
{
    return m_root.state(QStringLiteral("wireless-ssid"));
}

int WifiNetworks::signalStrength(const QString &ssid) const
{
    return find(ssid).value_or(QJsonObject()).value(QLatin1String("signal strength")).toInt();
}

bool WifiNetworks::hasFile(const QString &devicePath) const
{
    // A name without a folder is one of the device's client certificates.
    const QString path = devicePath.contains(QLatin1Char('/')) ? devicePath : certificates + devicePath;
    return !devicePath.isEmpty() && QFileInfo(m_root.file(path)).isFile();
}

WifiVerdict WifiNetworks::checkEnterprise(const QJsonObject &network,
                                          const WifiCredentials &credentials) const
{
    const QString ca = text(network, "ca certificate");
    if (!credentials.caCertificate.isEmpty()
        && (!hasFile(credentials.caCertificate) || QFileInfo(credentials.caCertificate).fileName() != ca))
        return WifiVerdict::CertificateRefused;
    if (credentials.authenticationMethod == QLatin1String("tls"))
        return hasFile(credentials.clientCertificate) ? WifiVerdict::Connected
                                                      : WifiVerdict::CertificateRefused;
    const bool known
        = credentials.user == text(network, "user") && credentials.password == text(network, "password");
    return known ? WifiVerdict::Connected : WifiVerdict::IncorrectKey;
}

WifiVerdict WifiNetworks::check(const WifiCredentials &credentials) const
{
    const std::optional<QJsonObject> network = find(credentials.ssid);
    if (!network || (network->value(QLatin1String("hidden")).toBool() && !credentials.hidden))
        return WifiVerdict::NotFound;
    const QString authentication = text(*network, "authentication");
    if (authentication == QLatin1String("802.1x"))
        return checkEnterprise(*network, credentials);
    if (authentication == QLatin1String("NONE") || credentials.key == text(*network, "key"))
        return WifiVerdict::Connected;
    return WifiVerdict::IncorrectKey;
}

WifiVerdict WifiNetworks::join(const WifiCredentials &credentials) const
{
    leave();
    const WifiVerdict verdict = check(credentials);
    if (verdict == WifiVerdict::Connected)
        associate(credentials.ssid, true);
    return verdict;
}

bool WifiNetworks::associate(const QString &ssid, bool setAddress) const
{
    if (!find(ssid))
        return false;
    leave();
    m_root.setState(QStringLiteral("wireless-ssid"), ssid);
    const DeviceInterface wireless = DeviceInterface::wireless(m_root);
    if (setAddress)
        wireless.connect(wireless.wanted());
    return true;
}

void WifiNetworks::leave() const
{
    m_root.setState(QStringLiteral("wireless-ssid"), QString());
    DeviceInterface::wireless(m_root).disconnect();
}

WifiCredentials configuredCredentials(const DeviceRoot &root)
{
    const QJsonObject wlan = DeviceInterface::wireless(root).configuration();
    WifiCredentials credentials;
    credentials.ssid = text(wlan, "ssid");
    credentials.hidden = wlan.value(QLatin1String("hidden ssid")).toBool();
    credentials.key = text(wlan, "passphrase");
    credentials.user = text(wlan, "user name");
    credentials.password = text(wlan, "user password");
    credentials.authenticationMethod = text(wlan, "authentication method");
    if (!text(wlan, "ca certificate").isEmpty())
        credentials.caCertificate = certificates + QStringLiteral("cacerts") + text(wlan, "ca certificate");
    if (!text(wlan, "pkcs12 certificate").isEmpty())
        credentials.clientCertificate = text(wlan, "pkcs12 certificate") + QStringLiteral(".p12");
    return credentials;
}
