// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/wired.h"

#include "devicetools/tool.h"
#include "network-tools/activation.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"
#include "network-tools/profile.h"

#include <unistd.h>

namespace Wired {

namespace {

using KernelNetwork::eth0;

int noInterface()
{
    return Tool::fail(QStringLiteral("there is no interface eth0"));
}

/// NetworkManager neither takes an interface down nor brings it up without connecting it. The launcher's user
/// may run exactly these two calls as root.
int switchTo(bool on)
{
    if (!KernelNetwork::exists(eth0))
        return noInterface();
    if (geteuid() != 0) {
        execlp("sudo", "sudo", "-n", "/usr/bin/kt-network-config", on ? "turn-on-wired" : "turn-off-wired",
               "A", nullptr);
        return Tool::fail(QStringLiteral("this needs root's rights"));
    }
    const int status = on ? Tool::Done : Wired::disconnect();
    if (status != Tool::Done)
        return status;
    return KernelNetwork::turn(eth0, on) ? Tool::Done : Tool::fail(QStringLiteral("cannot switch eth0"));
}

int report(const Activation::Outcome &outcome)
{
    using End = Activation::Outcome::End;
    switch (outcome.end) {
    case End::Connected:
        break;
    case End::Refused:
        return Tool::fail(outcome.error);
    case End::TimedOut:
        return Tool::fail(QStringLiteral("eth0 has got no address yet; NetworkManager goes on trying"));
    case End::Failed:
    case End::Stopped:
        return Tool::fail(QStringLiteral("eth0 could not be connected (reason %1)").arg(int(outcome.reason)));
    }
    return KernelNetwork::address(eth0) ? Tool::Done
                                        : Tool::fail(QStringLiteral("no usable address for eth0"));
}

} // namespace

int connect(int limitMs)
{
    if (!NetworkService::isToConnect(Profile::wiredUuid))
        return Tool::fail(QStringLiteral("the wired interface is disabled or has no usable address"));
    const NetworkManager::Device::Ptr device = NetworkService::device(eth0);
    if (!device)
        return noInterface();
    // An interface that is off has no carrier to ask for. NetworkManager turns it on.
    if (KernelNetwork::isOn(eth0) && !KernelNetwork::hasCarrier(eth0))
        return Tool::fail(QStringLiteral("no carrier on eth0"));
    QString error;
    if (!NetworkService::setManaged(device, true, error))
        return Tool::fail(error);
    return report(Activation::connect(device, NetworkService::profilePath(Profile::wiredUuid),
                                      QStringLiteral("/"), limitMs));
}

int disconnect()
{
    const NetworkManager::Device::Ptr device = NetworkService::device(eth0);
    if (!device) // nothing is connected
        return Tool::Done;
    QString error;
    return Activation::disconnect(device, error) ? Tool::Done : Tool::fail(error);
}

int turnOn()
{
    return switchTo(true);
}

int turnOff()
{
    return switchTo(false);
}

} // namespace Wired
