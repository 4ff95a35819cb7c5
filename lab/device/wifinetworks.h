// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

// What a station shows to a wireless network that it wants to join. Certificates are paths of the device.
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

// The wireless networks around the device (lab/state/wifi-list.json) and the one it is associated with.
class WifiAir
{
public:
    explicit WifiAir(const DeviceRoot &root);

    // The scan as the device tool prints it: without hidden networks and without what only the networks know.
    // A file that holds no array is handed on as it is.
    QString scan() const;

    QJsonArray networks() const;
    QString currentSsid() const;
    int signalStrength(const QString &ssid) const;

    // Leaves the present network, and joins the named one if it lets us, with the address that the stored
    // configuration asks for.
    WifiVerdict join(const WifiCredentials &credentials) const;

    // Association without any check; the address comes with connectNow.
    bool associate(const QString &ssid, bool connectNow) const;
    void leave() const;

private:
    std::optional<QJsonObject> find(const QString &ssid) const;
    WifiVerdict check(const WifiCredentials &credentials) const;
    WifiVerdict checkEnterprise(const QJsonObject &network, const WifiCredentials &credentials) const;
    bool hasFile(const QString &devicePath) const;

    DeviceRoot m_root;
};

// The wireless network that the stored configuration names.
WifiCredentials configuredCredentials(const DeviceRoot &root);
