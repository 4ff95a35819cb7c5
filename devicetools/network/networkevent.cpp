// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"
#include "launchermessage/launchermessage.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/leaseoptions.h"
#include "network-tools/networkservice.h"
#include "network-tools/profile.h"

namespace {

/// The address that a lease offers, the wired interface's before the other's.
QString offeredAddress()
{
    for (const QString &interface : {KernelNetwork::eth0, KernelNetwork::wlan0}) {
        const NetworkManager::Device::Ptr device = NetworkService::device(interface);
        const NetworkManager::Dhcp4Config::Ptr lease
            = device ? device->dhcp4Config() : NetworkManager::Dhcp4Config::Ptr();
        QString address = lease ? LeaseOptions::managementAddress(lease->options()) : QString();
        if (!address.isEmpty())
            return address;
    }
    return {};
}

/// A cable that is left in an interface that has been disabled is no link to wait for.
bool isStillLinked(const QString &interface)
{
    return interface == KernelNetwork::eth0 && KernelNetwork::hasCarrier(interface)
        && NetworkService::isToConnect(Profile::wiredUuid);
}

int run(const QStringList &arguments)
{
    const QString interface = arguments.value(0);
    const QString event = arguments.value(1);
    // There are events of other interfaces, and events of no interface.
    if (interface != KernelNetwork::eth0 && interface != KernelNetwork::wlan0)
        return Tool::Done;
    const bool isUp = event == QLatin1String("up");
    const bool isDown = event == QLatin1String("down");
    if (!isUp && !isDown && event != QLatin1String("dhcp4-change"))
        return Tool::Done;
    if (!NetworkService::isThere())
        return Tool::Failed;
    int status = Tool::Done;
    if (!LeaseOptions::publish(offeredAddress()))
        status = Tool::fail(QStringLiteral("cannot change /tmp/dhcp-options.conf"));
    const QString state = isUp     ? QStringLiteral("connected")
        : isStillLinked(interface) ? QStringLiteral("link")
                                   : QStringLiteral("no link");
    if ((isUp || isDown) && !LauncherMessage::send(LauncherMessage::networkStatus(interface, state)))
        status = Tool::fail(QStringLiteral("cannot write /tmp/msg.json"));
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"kt-network-event", "INTERFACE EVENT",
          "Tells the launcher what has become of a link, and which management server DHCP offers.\n"
          "NetworkManager calls it.\n",
          25, run}});
}
