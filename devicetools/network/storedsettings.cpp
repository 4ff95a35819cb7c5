// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/storedsettings.h"

#include "devicetools/checks.h"
#include "devicetools/document.h"
#include "devicetools/tool.h"
#include "network-tools/certificatefile.h"
#include "network-tools/networkservice.h"
#include "network-tools/profile.h"

#include <algorithm>
#include <iterator>

namespace StoredSettings {

namespace {

QJsonObject member(const QJsonObject &object, const char *name)
{
    return object.value(QLatin1String(name)).toObject();
}

bool isEnabled(const QJsonObject &interface)
{
    return interface.value(QLatin1String("enabled")).toBool()
        && Document::text(interface, "type") != QLatin1String("off");
}

/// Without a usable address the interface stays as unconnected as a disabled one.
Addressing addressing(const QJsonObject &interface, const char *name, bool &enabled, int &status)
{
    const std::optional<Addressing> wanted = Addressing::fromDocument(interface);
    if (wanted)
        return *wanted;
    if (enabled)
        status = Tool::fail(QStringLiteral("no usable address for %1").arg(QLatin1String(name)));
    enabled = false;
    Addressing none;
    none.isStatic = true;
    return none;
}

int result(bool stored, int status, const QString &error)
{
    return stored ? status : Tool::fail(error);
}

int storeWired(const QJsonObject &eth)
{
    int status = Tool::Done;
    bool enabled = isEnabled(eth);
    const Addressing wanted = addressing(eth, "eth0", enabled, status);
    QString error;
    return result(NetworkService::storeProfile(Profile::wired(wanted, enabled), error), status, error);
}

/// An earlier join may have found that the same network wants another protocol than the usual one.
QString keyManagement(const WifiNetwork &network)
{
    const NMVariantMapMap earlier = NetworkService::profile(Profile::wirelessUuid);
    QString known = earlier.value(QStringLiteral("802-11-wireless-security"))
                        .value(QStringLiteral("key-mgmt"))
                        .toString();
    const bool isSame
        = earlier.value(QStringLiteral("802-11-wireless")).value(QStringLiteral("ssid")).toByteArray()
        == network.ssid.toUtf8();
    const bool isOpen = network.security == WifiNetwork::Security::Open;
    if (isSame && known == (isOpen ? QLatin1String("owe") : QLatin1String("sae"))
        && network.security != WifiNetwork::Security::Enterprise)
        return known;
    return Profile::keyManagementFor(network.security, std::nullopt);
}

/// A network that cannot be used is not stored.
int storeWireless(const QJsonObject &wlan)
{
    QString error;
    const WifiNetwork network = WifiNetwork::fromDocument(wlan);
    if (network.ssid.isEmpty())
        return result(NetworkService::removeProfile(Profile::wirelessUuid, error), Tool::Done, error);
    QString problem = network.problem();
    const std::optional<Profile::Certificates> certificates
        = problem.isEmpty() ? CertificateFile::read(network, problem) : std::nullopt;
    if (!certificates) {
        Tool::fail(problem);
        return result(NetworkService::removeProfile(Profile::wirelessUuid, error), Tool::Failed, error);
    }
    int status = Tool::Done;
    bool enabled = isEnabled(wlan);
    const Addressing wanted = addressing(wlan, "wlan0", enabled, status);
    return result(
        NetworkService::storeProfile(
            Profile::wireless(network, *certificates, keyManagement(network), wanted, enabled), error),
        status, error);
}

int storeNameServers(const QJsonObject &dns)
{
    QStringList servers;
    QString domain;
    if (Document::text(dns, "type") == QLatin1String("static")) {
        for (const char *name : {"dns1", "dns2"}) {
            const QString server = Document::text(dns, name);
            if (Checks::isHostAddress(server))
                servers += server;
        }
        const QString wanted = Document::text(dns, "domain");
        domain = Checks::isHostName(wanted) ? wanted : QString();
    }
    QString error;
    return result(NetworkService::setNameServers(servers, domain, error), Tool::Done, error);
}

} // namespace

int store(const QJsonObject &network)
{
    const QJsonObject interfaces = member(network, "interfaces");
    // One that fails keeps none of the others from being stored.
    const int statuses[] = {storeWired(member(interfaces, "eth")), storeWireless(member(interfaces, "wlan")),
                            storeNameServers(member(network, "DNS"))};
    return *std::max_element(std::begin(statuses), std::end(statuses));
}

} // namespace StoredSettings
