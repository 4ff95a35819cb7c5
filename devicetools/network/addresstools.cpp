// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/checks.h"
#include "devicetools/tool.h"
#include "network-tools/activation.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"
#include "network-tools/profile.h"
#include "network-tools/tools.h"

namespace {

using NetworkManager::Device;

/// NetworkManager takes the addresses off five or six seconds after the cable is out.
constexpr int carrierLossLimitMs = 10000;
constexpr int connectLimitMs = 20000;
constexpr int gatewayLimitMs = 10000;

const QStringList interfaces{KernelNetwork::eth0, KernelNetwork::wlan0};

QString profileOf(const QString &interface)
{
    return NetworkService::profilePath(interface == KernelNetwork::eth0 ? Profile::wiredUuid
                                                                        : Profile::wirelessUuid);
}

bool isConnecting(const Device::Ptr &device)
{
    return device && device->state() >= Device::Preparing && device->state() <= Device::Activated;
}

/// With the cable out we leave it to NetworkManager: what it takes off itself it also brings back itself.
int takeOff(const QString &interface, const QString &address)
{
    const auto isOff = [&] {
        return !KernelNetwork::hasAddress(interface, address);
    };
    if (isOff())
        return Tool::fail(QStringLiteral("%1 has no address %2").arg(interface, address));
    const Device::Ptr device = NetworkService::device(interface);
    QString error;
    if (KernelNetwork::hasCarrier(interface))
        return device && Activation::disconnect(device, error) ? Tool::Done : Tool::fail(error);
    Activation::waitFor([&] { return isOff() || KernelNetwork::hasCarrier(interface); }, carrierLossLimitMs);
    return isOff() ? Tool::Done : Tool::fail(QStringLiteral("%1 keeps its address").arg(interface));
}

/// The stored settings decide which address the interface has. After a change of cables a lease may be
/// another.
int bringBack(const QString &interface, const QString &address)
{
    const Device::Ptr device = NetworkService::device(interface);
    const QString profile = profileOf(interface);
    if (!device || profile.isEmpty())
        return Tool::fail(QStringLiteral("no settings are stored for %1").arg(interface));
    const auto isBack = [&] {
        return KernelNetwork::address(interface).has_value();
    };
    if (!isBack() && !KernelNetwork::hasCarrier(interface))
        return Tool::fail(QStringLiteral("no carrier on %1").arg(interface));
    if (isConnecting(device))
        Activation::waitFor(isBack, connectLimitMs);
    else if (!isBack())
        Activation::connect(device, profile, QStringLiteral("/"), connectLimitMs);
    if (!isBack())
        return Tool::fail(QStringLiteral("%1 has got no address").arg(interface));
    if (!KernelNetwork::hasAddress(interface, address))
        Tool::fail(QStringLiteral("%1 has another address by its settings").arg(interface));
    return Tool::Done;
}

/// The interface that the default route is to go through, once it has its address.
QString addressedInterface()
{
    for (const QString &interface : interfaces) {
        const auto hasAddress = [&] {
            return KernelNetwork::address(interface).has_value();
        };
        const Device::Ptr device = NetworkService::device(interface);
        if (!hasAddress() && isConnecting(device))
            Activation::waitFor([&] { return hasAddress() || !isConnecting(device); }, gatewayLimitMs);
        if (hasAddress())
            return interface;
    }
    return {};
}

} // namespace

int runIpSettings(const QStringList &arguments)
{
    const QString action = arguments.value(0);
    const bool isValid = (arguments.size() == 4 || arguments.size() == 5)
        && (action == QLatin1String("-a") || action == QLatin1String("-d"))
        && interfaces.contains(arguments.at(1)) && Checks::isHostAddress(arguments.at(2))
        && Checks::number(arguments.at(3), 1, 32) && (arguments.size() == 4 || Checks::ipv4(arguments.at(4)));
    if (!isValid)
        return Tool::reject(QStringLiteral("no such address or interface"));
    if (!NetworkService::isThere())
        return Tool::Failed;
    return action == QLatin1String("-a") ? bringBack(arguments.at(1), arguments.at(2))
                                         : takeOff(arguments.at(1), arguments.at(2));
}

int runCheckGateway(const QStringList &arguments)
{
    if (!arguments.isEmpty())
        return Tool::reject(QStringLiteral("no arguments are needed"));
    if (!NetworkService::isThere())
        return Tool::Failed;
    // NetworkManager's routes prefer the wired interface by their metric.
    const QString interface = addressedInterface();
    const auto isRouted = [&] {
        return !KernelNetwork::gateway(interface).isEmpty();
    };
    if (interface.isEmpty() || isRouted())
        return Tool::Done;
    const Device::Ptr device = NetworkService::device(interface);
    if (!device || device->ipV4Config().gateway().isEmpty()) // a network without a way out
        return Tool::Done;
    QString error;
    if (!NetworkService::succeeded(device->reapplyConnection({}, 0, 0), error))
        return Tool::fail(error);
    return Activation::waitFor(isRouted, gatewayLimitMs)
        ? Tool::Done
        : Tool::fail(QStringLiteral("no default route through %1").arg(interface));
}
