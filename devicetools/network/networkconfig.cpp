// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/checks.h"
#include "devicetools/document.h"
#include "devicetools/tool.h"
#include "network-tools/activation.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"
#include "network-tools/storedsettings.h"
#include "network-tools/tools.h"
#include "network-tools/wired.h"
#include "network-tools/wireless.h"

#include <QJsonDocument>

namespace {

using KernelNetwork::eth0;
using KernelNetwork::wlan0;

constexpr int connectLimitMs = 20000;
/// Each of the two interfaces, one after the other.
constexpr int autoconnectLimitMs = 8000;

int printReply(bool value)
{
    Tool::print(value ? QStringLiteral("true") : QStringLiteral("false"));
    return Tool::Done;
}

int printReply(const QJsonDocument &document)
{
    Tool::print(QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
    return Tool::Done;
}

int printValues(const QJsonObject &values)
{
    return printReply(QJsonDocument(QJsonObject{{QStringLiteral("values"), values}}));
}

int setConfig(const QString &fileName)
{
    const std::optional<QJsonObject> document = Document::read(fileName);
    const QJsonObject network
        = document.value_or(QJsonObject()).value(QLatin1String("network settings")).toObject();
    if (network.isEmpty())
        return Tool::fail(QStringLiteral("no network settings in %1").arg(fileName));
    return StoredSettings::store(network);
}

int autoconnect(const QString &fileName)
{
    const int status = setConfig(fileName);
    if (NetworkService::isToConnect(Profile::wiredUuid))
        Wired::connect(autoconnectLimitMs);
    const NetworkManager::WirelessDevice::Ptr device = Wireless::device();
    if (device && NetworkService::isToConnect(Profile::wirelessUuid))
        Activation::connect(device, NetworkService::profilePath(Profile::wirelessUuid), QStringLiteral("/"),
                            autoconnectLimitMs);
    return status;
}

int connectEthernet(const QString &)
{
    return Wired::connect(connectLimitMs);
}

int disconnectEthernet(const QString &)
{
    return Wired::disconnect();
}

int turnOnWired(const QString &)
{
    return Wired::turnOn();
}

int turnOffWired(const QString &)
{
    return Wired::turnOff();
}

int disconnectWifi(const QString &)
{
    const NetworkManager::WirelessDevice::Ptr device = Wireless::device();
    QString error;
    if (!device || Activation::disconnect(device, error)) // without an interface there is nothing to leave
        return Tool::Done;
    return Tool::fail(error);
}

int isWiredLinked(const QString &)
{
    return printReply(KernelNetwork::hasCarrier(eth0));
}

int isWiredOn(const QString &)
{
    return printReply(KernelNetwork::isOn(eth0));
}

int isWiredConnected(const QString &)
{
    return printReply(KernelNetwork::isOn(eth0) && KernelNetwork::address(eth0));
}

int isWirelessConnected(const QString &)
{
    return printReply(KernelNetwork::isReady(wlan0) && KernelNetwork::address(wlan0));
}

int checkWirelessPoint(const QString &)
{
    const NetworkManager::WirelessDevice::Ptr device = Wireless::device();
    const NetworkManager::AccessPoint::Ptr point
        = device ? device->activeAccessPoint() : NetworkManager::AccessPoint::Ptr();
    if (!point)
        return printValues({{QStringLiteral("status"), QStringLiteral("false")}});
    return printValues({{QStringLiteral("status"), QStringLiteral("true")},
                        {QStringLiteral("ssid"), QString::fromUtf8(point->rawSsid())},
                        {QStringLiteral("signal strength"), QString::number(point->signalStrength())}});
}

int printParameters(const QString &interface, const QString &uuid)
{
    const std::optional<KernelNetwork::Address> address = KernelNetwork::address(interface);
    const NMVariantMapMap profile = NetworkService::profile(uuid);
    const bool isStatic
        = !profile.isEmpty() && Addressing::fromProfile(profile.value(QStringLiteral("ipv4"))).isStatic;
    return printValues(
        {{QStringLiteral("ip address"), address ? address->address : QString()},
         {QStringLiteral("netmask address"),
          address ? Checks::maskOfPrefix(address->prefixLength) : QString()},
         {QStringLiteral("gateway address"), KernelNetwork::gateway(interface)},
         {QStringLiteral("type"), isStatic ? QStringLiteral("static") : QStringLiteral("dhcp")}});
}

int getEth0Parameters(const QString &)
{
    return printParameters(eth0, Profile::wiredUuid);
}

int getWlan0Parameters(const QString &)
{
    return printParameters(wlan0, Profile::wirelessUuid);
}

int getWifiList(const QString &)
{
    const NetworkManager::WirelessDevice::Ptr device = Wireless::device();
    QString error;
    if (!device || !Wireless::turnOn(device, error)) {
        Tool::print(QStringLiteral("[]"));
        return device ? Tool::fail(error) : Tool::fail(QStringLiteral("there is no interface wlan0"));
    }
    Wireless::scan(device, QString(), [] { return false; });
    return printReply(QJsonDocument(Wireless::list(Wireless::found(device))));
}

struct SubCommand
{
    const char *name;
    int (*run)(const QString &document);
    bool takesDocument;
    bool asksKernelAlone; ///< works without NetworkManager
};

constexpr SubCommand subCommands[] = {
    {"set-config", setConfig, true, false},
    {"connect-ethernet", connectEthernet, false, false},
    {"disconnect-ethernet", disconnectEthernet, false, false},
    {"turn-off-wired", turnOffWired, false, false},
    {"turn-on-wired", turnOnWired, false, false},
    {"disconnect-wifi", disconnectWifi, false, false},
    {"autoconnect", autoconnect, true, false},
    {"is-wired-linked", isWiredLinked, false, true},
    {"is-wired-on", isWiredOn, false, true},
    {"is-wired-connected", isWiredConnected, false, true},
    {"is-wireless-connected", isWirelessConnected, false, true},
    {"check-wireless-point", checkWirelessPoint, false, false},
    {"get-eth0-parameters", getEth0Parameters, false, false},
    {"get-wlan0-parameters", getWlan0Parameters, false, false},
    {"get-wifi-list", getWifiList, false, false},
};

} // namespace

int runNetworkConfig(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    if (arguments.value(1) != QLatin1String("A"))
        return Tool::fail(QStringLiteral("usage: kt-network-config SUB-COMMAND A [DOCUMENT]"));
    for (const SubCommand &subCommand : subCommands) {
        if (name != QLatin1String(subCommand.name))
            continue;
        if (arguments.size() != (subCommand.takesDocument ? 3 : 2))
            return Tool::fail(QStringLiteral("%1 takes other arguments").arg(name));
        if (!subCommand.asksKernelAlone && !NetworkService::isThere())
            return Tool::Failed;
        return subCommand.run(arguments.value(2));
    }
    return Tool::fail(QStringLiteral("unknown sub-command %1").arg(name));
}
