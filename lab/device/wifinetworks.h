// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

/// The credentials for joining a wireless network. Certificates are paths of the device.
struct WifiCredentials
{
    QString ssid;
    bool hidden = false;
    QString key;
    QString user;
    QString password;
    QString authenticationMethod;
    QString caCertificate;
    QString clientCertificate;
};

enum class WifiVerdict { Connected, IncorrectKey, CertificateRefused, NotFound };

/// The wireless networks in range (lab/state/wifi-list.json), and the one with which the device is
/// associated.
class WifiNetworks
{
public:
    explicit WifiNetworks(const DeviceRoot &root);

    /// Returns the scan as the device tool prints it: without hidden networks and without secrets. Returns a
    /// file unchanged that does not hold an array.
    QString scan() const;

    QJsonArray networks() const;
    QString currentSsid() const;
    int signalStrength(const QString &ssid) const;

    /// Leaves the current network and joins the named one, with the address of the stored configuration.
    WifiVerdict join(const WifiCredentials &credentials) const;

    /// Associates without checking credentials; sets the address only if asked to.
    bool associate(const QString &ssid, bool setAddress) const;
    void leave() const;

private:
    std::optional<QJsonObject> find(const QString &ssid) const;
    WifiVerdict check(const WifiCredentials &credentials) const;
    WifiVerdict checkEnterprise(const QJsonObject &network, const WifiCredentials &credentials) const;
    bool hasFile(const QString &devicePath) const;

    DeviceRoot m_root;
};

/// Returns the credentials of the stored configuration.
WifiCredentials configuredCredentials(const DeviceRoot &root);
