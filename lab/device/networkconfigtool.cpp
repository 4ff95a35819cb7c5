// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/deviceinterface.h"
#include "lab-device/liveinterface.h"
#include "lab-device/output.h"
#include "lab-device/tools.h"
#include "lab-device/wifinetworks.h"

#include <QFile>
#include <QJsonDocument>

namespace {

int fail(const QString &reason)
{
    printError(QStringLiteral("kt-network-config: ") + reason);
    return 1;
}

int printReply(bool value)
{
    printLine(value ? QStringLiteral("true") : QStringLiteral("false"));
    return 0;
}

int printReply(const QJsonObject &values)
{
    printLine(
        QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("values"), values}}).toJson()).trimmed());
    return 0;
}

void writeNameServers(const DeviceRoot &root, const QJsonObject &dns)
{
    QStringList lines;
    const auto add = [&](const QString &word, const char *key) {
        const QString value = dns.value(QLatin1String(key)).toString();
        if (!value.isEmpty())
            lines << word + QLatin1Char(' ') + value;
    };
    if (dns.value(QLatin1String("type")).toString() == QLatin1String("static")) {
        add(QStringLiteral("search"), "domain");
        add(QStringLiteral("nameserver"), "dns1");
        add(QStringLiteral("nameserver"), "dns2");
    } else {
        lines << QStringLiteral("nameserver 10.77.0.1");
    }
    QFile file(root.file(QStringLiteral("/etc/resolv.conf")));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(lines.join(QLatin1Char('\n')).toUtf8() + '\n');
}

int setConfig(const ToolCall &call)
{
    QFile file(call.root.file(call.argument(2)));
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1").arg(file.fileName()));
    const QJsonObject document = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonObject network = document.value(QLatin1String("network settings")).toObject();
    if (network.isEmpty())
        return fail(QStringLiteral("no network settings in %1").arg(file.fileName()));
    writeNameServers(call.root, network.value(QLatin1String("DNS")).toObject());
    const QString text = QString::fromUtf8(QJsonDocument(network).toJson());
    return call.root.setState(QStringLiteral("network.json"), text) ? 0 : 1;
}

void dropWiredAddress(const DeviceRoot &root)
{
    const DeviceInterface wired = DeviceInterface::wired(root);
    const Addressing old = wired.addressing();
    if (!old.address.isEmpty())
        removeLiveAddress(root, old.address, prefixLengthOf(old.netmask));
    wired.disconnect();
}

int connectEthernet(const ToolCall &call)
{
    const DeviceRoot &root = call.root;
    const DeviceInterface wired = DeviceInterface::wired(root);
    dropWiredAddress(root);
    if (!wired.isEnabled())
        return fail(QStringLiteral("the wired interface is disabled"));
    root.setState(QStringLiteral("wired"), QStringLiteral("on"));
    if (root.state(QStringLiteral("cable")) != QLatin1String("plugged"))
        return fail(QStringLiteral("no carrier on eth0"));
    const Addressing wanted = wired.wanted();
    if (prefixLengthOf(wanted.netmask) < 0 || wanted.address.isEmpty())
        return fail(QStringLiteral("no usable address for eth0"));
    wired.connect(wanted);
    addLiveAddress(root, wanted.address, prefixLengthOf(wanted.netmask), QString());
    return 0;
}

int disconnectEthernet(const ToolCall &call)
{
    dropWiredAddress(call.root);
    return 0;
}

int turnOffWired(const ToolCall &call)
{
    dropWiredAddress(call.root);
    return call.root.setState(QStringLiteral("wired"), QStringLiteral("off")) ? 0 : 1;
}

int turnOnWired(const ToolCall &call)
{
    return call.root.setState(QStringLiteral("wired"), QStringLiteral("on")) ? 0 : 1;
}

int disconnectWifi(const ToolCall &call)
{
    WifiNetworks(call.root).leave();
    return 0;
}

int autoconnect(const ToolCall &call)
{
    const int status = setConfig(call);
    if (status != 0)
        return status;
    if (DeviceInterface::wired(call.root).isEnabled())
        connectEthernet(call);
    if (DeviceInterface::wireless(call.root).isEnabled())
        WifiNetworks(call.root).join(configuredCredentials(call.root));
    return 0;
}

bool isWiredConnected(const DeviceRoot &root)
{
    return root.state(QStringLiteral("wired")) == QLatin1String("on")
        && !DeviceInterface::wired(root).addressing().address.isEmpty();
}

int isWiredLinked(const ToolCall &call)
{
    return printReply(call.root.state(QStringLiteral("cable")) == QLatin1String("plugged"));
}

int isWiredOn(const ToolCall &call)
{
    return printReply(call.root.state(QStringLiteral("wired")) == QLatin1String("on"));
}

int isWiredConnectedQuery(const ToolCall &call)
{
    return printReply(isWiredConnected(call.root));
}

int isWirelessConnected(const ToolCall &call)
{
    return printReply(!WifiNetworks(call.root).currentSsid().isEmpty()
                      && !DeviceInterface::wireless(call.root).addressing().address.isEmpty());
}

int checkWirelessPoint(const ToolCall &call)
{
    const WifiNetworks wifi(call.root);
    const QString ssid = wifi.currentSsid();
    if (ssid.isEmpty())
        return printReply({{QStringLiteral("status"), QStringLiteral("false")}});
    return printReply({{QStringLiteral("status"), QStringLiteral("true")},
                       {QStringLiteral("ssid"), ssid},
                       {QStringLiteral("signal strength"), QString::number(wifi.signalStrength(ssid))}});
}

int parameters(const DeviceInterface &interface)
{
    const Addressing now = interface.addressing();
    return printReply({{QStringLiteral("ip address"), now.address},
                       {QStringLiteral("gateway address"), now.gateway},
                       {QStringLiteral("netmask address"), now.netmask},
                       {QStringLiteral("type"), now.type}});
}

int getEth0Parameters(const ToolCall &call)
{
    return parameters(DeviceInterface::wired(call.root));
}

int getWlan0Parameters(const ToolCall &call)
{
    return parameters(DeviceInterface::wireless(call.root));
}

int getWifiList(const ToolCall &call)
{
    printLine(WifiNetworks(call.root).scan());
    return 0;
}

struct SubCommand
{
    const char *name;
    int (*run)(const ToolCall &call);
};

constexpr SubCommand subCommands[] = {
    {"set-config", setConfig},
    {"connect-ethernet", connectEthernet},
    {"disconnect-ethernet", disconnectEthernet},
    {"turn-off-wired", turnOffWired},
    {"turn-on-wired", turnOnWired},
    {"disconnect-wifi", disconnectWifi},
    {"autoconnect", autoconnect},
    {"is-wired-linked", isWiredLinked},
    {"is-wired-on", isWiredOn},
    {"is-wired-connected", isWiredConnectedQuery},
    {"is-wireless-connected", isWirelessConnected},
    {"check-wireless-point", checkWirelessPoint},
    {"get-eth0-parameters", getEth0Parameters},
    {"get-wlan0-parameters", getWlan0Parameters},
    {"get-wifi-list", getWifiList},
};

} // namespace

int runNetworkConfig(const ToolCall &call)
{
    if (call.argument(1) != QLatin1String("A"))
        return fail(QStringLiteral("usage: kt-network-config SUB-COMMAND A [DOCUMENT]"));
    for (const SubCommand &subCommand : subCommands)
        if (call.argument(0) == QLatin1String(subCommand.name))
            return subCommand.run(call);
    return fail(QStringLiteral("unknown sub-command %1").arg(call.argument(0)));
}
