// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/wireless.h"

#include "network-tools/activation.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"

#include <NetworkManagerQt/Manager>

#include <QJsonObject>
#include <QMap>

namespace Wireless {

namespace {

using NetworkManager::AccessPoint;
using NetworkManager::Device;
using NetworkManager::WirelessDevice;

constexpr int turnOnLimitMs = 6000;
constexpr int scanLimitMs = 12000;

QString authentication(const Profile::AccessPointFlags &flags)
{
    const quint32 both = flags.wpa | flags.rsn;
    if (both & (AccessPoint::KeyMgmt8021x | AccessPoint::KeyMgmtEapSuiteB192))
        return QStringLiteral("802.1x");
    if (both & AccessPoint::KeyMgmtPsk)
        return QStringLiteral("PSK");
    if (both & AccessPoint::KeyMgmtSAE)
        return QStringLiteral("SAE");
    return flags.privacy && both == 0 ? QStringLiteral("WEP") : QStringLiteral("NONE");
}

QString pairwise(const Profile::AccessPointFlags &flags)
{
    const quint32 both = flags.wpa | flags.rsn;
    QStringList ciphers;
    if (both & AccessPoint::PairTkip)
        ciphers += QStringLiteral("TKIP");
    if (both & AccessPoint::PairCcmp)
        ciphers += QStringLiteral("CCMP");
    return ciphers.join(QLatin1Char(' '));
}

} // namespace

WirelessDevice::Ptr device()
{
    return NetworkService::device(KernelNetwork::wlan0).objectCast<WirelessDevice>();
}

bool turnOn(const WirelessDevice::Ptr &device, QString &error)
{
    if (!NetworkManager::isWirelessHardwareEnabled()) {
        error = QStringLiteral("the radio is switched off by a key of this machine");
        return false;
    }
    const QString service = QStringLiteral("org.freedesktop.NetworkManager");
    if (!NetworkManager::isWirelessEnabled()
        && !NetworkService::setProperty(QStringLiteral("/org/freedesktop/NetworkManager"), service,
                                        QStringLiteral("WirelessEnabled"), true, error))
        return false;
    if (!NetworkService::setManaged(device, true, error))
        return false;
    if (Activation::waitFor([&] { return device->state() >= Device::Disconnected; }, turnOnLimitMs))
        return true;
    error = QStringLiteral("wlan0 cannot be used");
    return false;
}

void scan(const WirelessDevice::Ptr &device, const QString &ssid, const std::function<bool()> &isFound)
{
    QVariantMap options;
    if (!ssid.isEmpty())
        options.insert(QStringLiteral("ssids"), QVariant::fromValue(QByteArrayList{ssid.toUtf8()}));
    const QDateTime before = device->lastScan();
    // It is refused while another scan is under way, which then serves us as well.
    QString refused;
    NetworkService::succeeded(device->requestScan(options), refused);
    Activation::waitFor([&] { return device->lastScan() != before || isFound(); }, scanLimitMs);
}

AccessPoint::Ptr accessPoint(const WirelessDevice::Ptr &device, const QString &ssid)
{
    AccessPoint::Ptr best;
    for (const QString &path : device->accessPoints()) {
        const AccessPoint::Ptr candidate = device->findAccessPoint(path);
        if (candidate && candidate->rawSsid() == ssid.toUtf8()
            && (!best || candidate->signalStrength() > best->signalStrength()))
            best = candidate;
    }
    return best;
}

Profile::AccessPointFlags flagsOf(const AccessPoint &accessPoint)
{
    return {accessPoint.capabilities().testFlag(AccessPoint::Privacy), quint32(accessPoint.wpaFlags()),
            quint32(accessPoint.rsnFlags())};
}

QVector<Found> found(const WirelessDevice::Ptr &device)
{
    QVector<Found> result;
    for (const QString &path : device->accessPoints()) {
        if (const AccessPoint::Ptr one = device->findAccessPoint(path))
            result.append({QString::fromUtf8(one->rawSsid()), flagsOf(*one), one->signalStrength()});
    }
    return result;
}

QJsonArray list(const QVector<Found> &accessPoints)
{
    QMap<QStringList, int> strongest;
    for (const Found &one : accessPoints) {
        const QStringList network{one.ssid, authentication(one.flags), pairwise(one.flags)};
        if (!one.ssid.isEmpty())
            strongest[network] = std::max(strongest.value(network), one.strength);
    }
    QJsonArray result;
    for (auto network = strongest.constBegin(); network != strongest.constEnd(); ++network)
        result.append(QJsonObject{{QStringLiteral("ssid"), network.key().at(0)},
                                  {QStringLiteral("authentication"), network.key().at(1)},
                                  {QStringLiteral("pairwise"), network.key().at(2)},
                                  {QStringLiteral("signal strength"), network.value()}});
    return result;
}

} // namespace Wireless
