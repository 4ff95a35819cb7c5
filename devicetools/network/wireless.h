// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/profile.h"

#include <NetworkManagerQt/WirelessDevice>

#include <QJsonArray>
#include <QVector>

/// The wireless interface, wlan0.
namespace Wireless {

/// Null when the machine has none.
NetworkManager::WirelessDevice::Ptr device();

/// Turns the radio on, if need be, and waits until the device can be used.
bool turnOn(const NetworkManager::WirelessDevice::Ptr &device, QString &error);

/// Looks for networks, and for a hidden one by its name, until `isFound` holds or the scan has ended.
void scan(const NetworkManager::WirelessDevice::Ptr &device, const QString &ssid,
          const std::function<bool()> &isFound);

/// The strongest access point of a network, or null.
NetworkManager::AccessPoint::Ptr accessPoint(const NetworkManager::WirelessDevice::Ptr &device,
                                             const QString &ssid);
Profile::AccessPointFlags flagsOf(const NetworkManager::AccessPoint &accessPoint);

/// What a scan has found of one access point.
struct Found
{
    QString ssid;
    Profile::AccessPointFlags flags;
    int strength = 0;
};
QVector<Found> found(const NetworkManager::WirelessDevice::Ptr &device);
/// The list that get-wifi-list prints: each network once, by its strongest access point. A network without a
/// name is left out.
QJsonArray list(const QVector<Found> &accessPoints);

} // namespace Wireless
