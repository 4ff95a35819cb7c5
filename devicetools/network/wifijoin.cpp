// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"
#include "network-tools/certificatefile.h"
#include "network-tools/networkservice.h"
#include "network-tools/supplicantwatch.h"
#include "network-tools/tools.h"
#include "network-tools/wireless.h"

#include <QElapsedTimer>

namespace {

using NetworkManager::AccessPoint;
using NetworkManager::WirelessDevice;

/// Leaves time to say how it went before the tool's own limit.
constexpr int joinLimitMs = 42000;

int report(JoinVerdict verdict)
{
    Tool::print(lineOf(verdict));
    return verdict == JoinVerdict::Connected ? Tool::Done : Tool::Failed;
}

/// A network that has just come into range may need a second look. A hidden one need not be found: who knows
/// its name can ask for it.
AccessPoint::Ptr find(const WirelessDevice::Ptr &device, const WifiNetwork &network)
{
    const int looks = network.hidden ? 1 : 2;
    for (int look = 0; look < looks; ++look) {
        if (AccessPoint::Ptr known = Wireless::accessPoint(device, network.ssid))
            return known;
        // Asked for by its name, a hidden network would answer though it is not said to be one.
        Wireless::scan(device, network.hidden ? network.ssid : QString(),
                       [&] { return !Wireless::accessPoint(device, network.ssid).isNull(); });
    }
    return Wireless::accessPoint(device, network.ssid);
}

/// Stores the network in the place of the one before; how the interface gets its address stays.
bool store(const WifiNetwork &network, const Profile::Certificates &certificates,
           const AccessPoint::Ptr &accessPoint, QString &error)
{
    const NMVariantMapMap earlier = NetworkService::profile(Profile::wirelessUuid);
    const Addressing addressing
        = earlier.isEmpty() ? Addressing() : Addressing::fromProfile(earlier.value(QStringLiteral("ipv4")));
    const bool enabled
        = earlier.value(QStringLiteral("connection")).value(QStringLiteral("autoconnect"), true).toBool();
    const auto flags = accessPoint ? std::optional(Wireless::flagsOf(*accessPoint)) : std::nullopt;
    const QString keyManagement = Profile::keyManagementFor(network.security, flags);
    return NetworkService::storeProfile(
        Profile::wireless(network, certificates, keyManagement, addressing, enabled), error);
}

JoinVerdict connect(const WirelessDevice::Ptr &device, const WifiNetwork &network,
                    const AccessPoint::Ptr &accessPoint, int limitMs)
{
    const SupplicantWatch watch;
    const Activation::Outcome outcome
        = Activation::connect(device, NetworkService::profilePath(Profile::wirelessUuid),
                              accessPoint ? accessPoint->uni() : QStringLiteral("/"), limitMs,
                              [&watch] { return !watch.notes().isHopeless(); });
    const JoinVerdict verdict = verdictOf(outcome, watch.notes(), network.security, device->state());
    if (!outcome.error.isEmpty())
        Tool::fail(outcome.error);
    // Many attempts with a wrong password lock an account.
    if (verdict == JoinVerdict::IncorrectKey || verdict == JoinVerdict::CertificateRejected) {
        QString error;
        NetworkService::succeeded(device->disconnectInterface(), error);
    }
    return verdict;
}

/// A client certificate that its password does not open is refused before the network is asked.
bool isWrongPassword(const QString &error)
{
    return error.contains(QLatin1String("private-key"));
}

int join(const WifiNetwork &network)
{
    QElapsedTimer clock;
    clock.start();
    if (!NetworkService::isThere())
        return Tool::Failed;
    const WirelessDevice::Ptr device = Wireless::device();
    if (!device) {
        Tool::fail(QStringLiteral("there is no interface wlan0"));
        return report(JoinVerdict::NotFound);
    }
    QString error;
    const std::optional<Profile::Certificates> certificates = CertificateFile::read(network, error);
    if (!certificates) {
        Tool::fail(error);
        return report(JoinVerdict::CertificateRejected);
    }
    if (!Wireless::turnOn(device, error)) {
        Tool::fail(error);
        return report(JoinVerdict::NotFound);
    }
    const AccessPoint::Ptr accessPoint = find(device, network);
    if (!accessPoint && !network.hidden)
        return report(JoinVerdict::NotFound);
    Tool::print(QStringLiteral("associating with %1").arg(network.ssid.simplified()));
    if (!store(network, *certificates, accessPoint, error)) {
        Tool::fail(error);
        return report(isWrongPassword(error) ? JoinVerdict::IncorrectKey : JoinVerdict::Failed);
    }
    return report(connect(device, network, accessPoint, joinLimitMs - static_cast<int>(clock.elapsed())));
}

bool isFlag(const QString &word)
{
    return word == QLatin1String("0") || word == QLatin1String("1");
}

} // namespace

int runCheckWifi(const QStringList &arguments)
{
    if (arguments.size() != 3 || !isFlag(arguments.at(2)))
        return Tool::reject(QStringLiteral("three arguments are needed"));
    const WifiNetwork network = WifiNetwork::fromArguments(arguments);
    const QString problem = network.problem();
    if (problem.isEmpty())
        return join(network);
    Tool::fail(problem);
    // No network has such a key.
    return report(network.key.isEmpty() ? JoinVerdict::NotFound : JoinVerdict::IncorrectKey);
}

int runEnterpriseWifi(const QStringList &arguments)
{
    if (arguments.size() != 10 || !isFlag(arguments.at(5)))
        return Tool::reject(QStringLiteral("ten arguments are needed"));
    const WifiNetwork network = WifiNetwork::fromEnterpriseArguments(arguments);
    const QString problem = network.problem();
    return problem.isEmpty() ? join(network) : Tool::reject(problem);
}
