// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <NetworkManagerQt/Device>
#include <NetworkManagerQt/GenericTypes>

#include <QDBusPendingCall>

#include <optional>

/// NetworkManager on the system's bus.
namespace NetworkService {

/// Says so on standard error when NetworkManager does not run. Nothing below may be called then.
bool isThere();

/// The device of this interface, or null.
NetworkManager::Device::Ptr device(const QString &interface);

/// Waits for the end of a call. On failure `error` says why.
bool succeeded(const QDBusPendingCall &call, QString &error);

/// Sets a property of an object of NetworkManager's.
bool setProperty(const QString &path, const QString &interface, const QString &name, const QVariant &value,
                 QString &error);

/// Lets NetworkManager manage the device, or leave it alone.
bool setManaged(const NetworkManager::Device::Ptr &device, bool managed, QString &error);

/// The path of the stored profile, empty when there is none.
QString profilePath(const QString &uuid);
/// The profile's settings without its secrets.
NMVariantMapMap profile(const QString &uuid);
/// Whether a profile is stored that NetworkManager is to connect whenever it can.
bool isToConnect(const QString &uuid);
/// Stores a profile in the place of an earlier one with its UUID.
bool storeProfile(const NMVariantMapMap &profile, QString &error);
bool removeProfile(const QString &uuid, QString &error);

/// Makes these the name servers of the device, whatever DHCP offers; with an empty list, DHCP's.
bool setNameServers(const QStringList &servers, const QString &domain, QString &error);

} // namespace NetworkService
