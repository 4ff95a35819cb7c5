// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/profile.h"

#include "network-tools/kernelnetwork.h"

#include <NetworkManagerQt/AccessPoint>

#include <QSysInfo>

namespace Profile {

const QString wiredUuid = QStringLiteral("6b743936-3465-4830-8000-657468300000");
const QString wirelessUuid = QStringLiteral("6b743936-3465-4830-8000-776c616e3000");

namespace {

/// Access points that offer encryption without a key. NetworkManagerQt does not name the flag.
constexpr quint32 owe = 0x800;
constexpr quint32 oweTransition = 0x1000;

/// Ahead of profiles that the machine had before.
constexpr int ahead = 100;

QVariantMap connection(const QString &interface, const QString &uuid, const QString &type, bool enabled)
{
    return {{QStringLiteral("id"), QLatin1String("kt964-") + interface},
            {QStringLiteral("uuid"), uuid},
            {QStringLiteral("type"), type},
            {QStringLiteral("interface-name"), interface},
            {QStringLiteral("autoconnect"), enabled},
            {QStringLiteral("autoconnect-priority"), ahead}};
}

/// The settings know IPv4 only, so the device has no address that nobody has asked for.
NMVariantMapMap withAddressing(NMVariantMapMap profile, const Addressing &addressing)
{
    profile.insert(QStringLiteral("ipv4"), addressing.toProfile());
    profile.insert(QStringLiteral("ipv6"), {{QStringLiteral("method"), QStringLiteral("disabled")}});
    return profile;
}

QVariantMap security(const WifiNetwork &network, const QString &keyManagement)
{
    QVariantMap result{{QStringLiteral("key-mgmt"), keyManagement}};
    if (network.security == WifiNetwork::Security::Personal)
        result.insert(QStringLiteral("psk"), network.key);
    if (network.advancedSecurity != QLatin1String("auto")) {
        const bool isFirst = network.advancedSecurity == QLatin1String("wpa");
        result.insert(QStringLiteral("proto"),
                      QStringList{isFirst ? QStringLiteral("wpa") : QStringLiteral("rsn")});
    }
    // Not the group's cipher: a network with both kinds of stations has the older one there.
    if (network.encryption != QLatin1String("auto"))
        result.insert(QStringLiteral("pairwise"), QStringList{network.encryption});
    return result;
}

/// PAP sends the password as it is, to a server that the certificate of its authority has proven. Without
/// such a certificate we send none that way.
QString innerMethod(const WifiNetwork &network)
{
    const bool isPlain = network.method == QLatin1String("ttls") && !network.caCertificate.isEmpty();
    return isPlain ? QStringLiteral("pap") : QStringLiteral("mschapv2");
}

QVariantMap enterprise(const WifiNetwork &network, const Certificates &certificates)
{
    QVariantMap result{{QStringLiteral("eap"), QStringList{network.method}},
                       {QStringLiteral("identity"), network.user}};
    if (!certificates.authority.isEmpty())
        result.insert(QStringLiteral("ca-cert"), certificates.authority);
    if (network.method == QLatin1String("tls")) {
        if (network.user.isEmpty()) // the server goes by the certificate, but asks for a name first
            result.insert(QStringLiteral("identity"), QSysInfo::machineHostName());
        result.insert(QStringLiteral("client-cert"), certificates.client);
        result.insert(QStringLiteral("private-key"), certificates.client);
        result.insert(QStringLiteral("private-key-password"), network.clientPassword);
    } else {
        result.insert(QStringLiteral("password"), network.password);
        result.insert(QStringLiteral("phase2-auth"), innerMethod(network));
    }
    return result;
}

} // namespace

NMVariantMapMap wired(const Addressing &addressing, bool enabled)
{
    const QString type = QStringLiteral("802-3-ethernet");
    return withAddressing(
        {{QStringLiteral("connection"), connection(KernelNetwork::eth0, wiredUuid, type, enabled)},
         {type, {}}},
        addressing);
}

NMVariantMapMap wireless(const WifiNetwork &network, const Certificates &certificates,
                         const QString &keyManagement, const Addressing &addressing, bool enabled)
{
    const QString type = QStringLiteral("802-11-wireless");
    NMVariantMapMap profile{
        {QStringLiteral("connection"), connection(KernelNetwork::wlan0, wirelessUuid, type, enabled)},
        {type,
         {{QStringLiteral("ssid"), network.ssid.toUtf8()},
          {QStringLiteral("mode"), QStringLiteral("infrastructure")},
          {QStringLiteral("hidden"), network.hidden}}}};
    if (!keyManagement.isEmpty())
        profile.insert(QStringLiteral("802-11-wireless-security"), security(network, keyManagement));
    if (network.security == WifiNetwork::Security::Enterprise)
        profile.insert(QStringLiteral("802-1x"), enterprise(network, certificates));
    return withAddressing(profile, addressing);
}

QString keyManagementFor(WifiNetwork::Security security, const std::optional<AccessPointFlags> &accessPoint)
{
    using Flag = NetworkManager::AccessPoint::WpaFlag;
    const quint32 flags = accessPoint ? accessPoint->wpa | accessPoint->rsn : 0;
    switch (security) {
    case WifiNetwork::Security::Enterprise:
        return QStringLiteral("wpa-eap");
    case WifiNetwork::Security::Personal: // "wpa-psk" includes the newer protocol where both are there
        return (flags & Flag::KeyMgmtSAE) && !(flags & Flag::KeyMgmtPsk) ? QStringLiteral("sae")
                                                                         : QStringLiteral("wpa-psk");
    case WifiNetwork::Security::Open:
        break;
    }
    return (flags & owe) && !(flags & oweTransition) ? QStringLiteral("owe") : QString();
}

} // namespace Profile
