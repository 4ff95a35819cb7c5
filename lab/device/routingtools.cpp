// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/deviceinterface.h"
#include "lab-device/liveinterface.h"
#include "lab-device/output.h"
#include "lab-device/tools.h"

#include <QHostAddress>

#include <optional>

namespace {

QString routeLine(const QString &destination, const QString &gateway, const QString &netmask,
                  const char *flags, const QString &interface)
{
    return QStringLiteral("%1%2%3%4 0      0        0 %5")
        .arg(destination, -16)
        .arg(gateway, -16)
        .arg(netmask, -16)
        .arg(QLatin1String(flags), -5)
        .arg(interface);
}

QString networkOf(const Addressing &addressing)
{
    return QHostAddress(QHostAddress(addressing.address).toIPv4Address()
                        & QHostAddress(addressing.netmask).toIPv4Address())
        .toString();
}

struct AddressChange
{
    bool add = false;
    QString interface;
    QString address;
    int prefixLength = 0;
    QString broadcast;
};

std::optional<AddressChange> parse(const QStringList &words)
{
    if (words.size() < 4 || words.size() > 5)
        return std::nullopt;
    bool isNumber = false;
    const AddressChange change{words.at(0) == QLatin1String("-a"), words.at(1), words.at(2),
                               words.at(3).toInt(&isNumber), words.value(4)};
    const bool isValid = (change.add || words.at(0) == QLatin1String("-d")) && isNumber
        && !netmaskOf(change.prefixLength).isEmpty() && !QHostAddress(change.address).isNull()
        && (change.interface == QLatin1String("eth0") || change.interface == QLatin1String("wlan0"));
    return isValid ? std::make_optional(change) : std::nullopt;
}

void changeLive(const DeviceRoot &root, const AddressChange &change)
{
    if (change.interface != QLatin1String("eth0"))
        return;
    if (change.add)
        addLiveAddress(root, change.address, change.prefixLength, change.broadcast);
    else
        removeLiveAddress(root, change.address, change.prefixLength);
}

} // namespace

int runCheckGateway(const ToolCall &call)
{
    chooseDefaultRoute(call.root);
    return 0;
}

int runIpSettings(const ToolCall &call)
{
    const std::optional<AddressChange> change = parse(call.arguments);
    if (!change) {
        printError(
            QStringLiteral("usage: kt-ip-settings -a|-d eth0|wlan0 ADDRESS PREFIX-LENGTH [BROADCAST]"));
        return 2;
    }
    const DeviceInterface interface = change->interface == QLatin1String("eth0")
        ? DeviceInterface::wired(call.root)
        : DeviceInterface::wireless(call.root);
    if (!change->add && interface.addressing().address != change->address) {
        printError(
            QStringLiteral("kt-ip-settings: %1 has no address %2").arg(change->interface, change->address));
        return 1;
    }
    if (change->add) {
        interface.setAddress(change->address, netmaskOf(change->prefixLength));
    } else {
        // Like the kernel, remove the routes through the address too. Only kt-check-gateway restores them.
        interface.setAddress(QString(), QString());
        if (call.root.state(QStringLiteral("default-route")) == interface.addressing().gateway)
            call.root.setState(QStringLiteral("default-route"), QString());
    }
    changeLive(call.root, *change);
    return 0;
}

int runRoute(const ToolCall &call)
{
    printLine(QStringLiteral("Kernel IP routing table"));
    printLine(
        QStringLiteral("Destination     Gateway         Genmask         Flags Metric Ref    Use Iface"));
    const QString none = QStringLiteral("0.0.0.0");
    const Addressing wired = DeviceInterface::wired(call.root).addressing();
    const Addressing wireless = DeviceInterface::wireless(call.root).addressing();
    const QString gateway = call.root.state(QStringLiteral("default-route"));
    const QString eth0 = QStringLiteral("eth0");
    const QString wlan0 = QStringLiteral("wlan0");
    if (!gateway.isEmpty())
        printLine(routeLine(none, gateway, none, "UG", gateway == wired.gateway ? eth0 : wlan0));
    if (!wired.address.isEmpty())
        printLine(routeLine(networkOf(wired), none, wired.netmask, "U", eth0));
    if (!wireless.address.isEmpty())
        printLine(routeLine(networkOf(wireless), none, wireless.netmask, "U", wlan0));
    return 0;
}
