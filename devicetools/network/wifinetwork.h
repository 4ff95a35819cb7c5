// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// A Wi-Fi network with the credentials for it. All of it comes from outside.
struct WifiNetwork
{
    enum class Security { Open, Personal, Enterprise };

    static WifiNetwork fromDocument(const QJsonObject &wlan);
    /// SSID KEY 0|1
    static WifiNetwork fromArguments(const QStringList &arguments);
    /// SSID USER METHOD ENCRYPTION SECURITY 0|1 CA CLIENT PASSWORD CLIENT-PASSWORD
    static WifiNetwork fromEnterpriseArguments(const QStringList &arguments);

    /// What makes the network unusable, in words for an administrator; empty when nothing does.
    QString problem() const;

    QString ssid;
    bool hidden = false;
    Security security = Security::Open;
    QString key;              ///< Personal: the pass phrase
    QString encryption;       ///< "auto", "tkip" or "ccmp"
    QString advancedSecurity; ///< "auto", "wpa" or "wpa2"
    QString user;
    QString method; ///< "peap", "ttls" or "tls"
    QString password;
    QString caCertificate;     ///< a file; empty: the server is not checked
    QString clientCertificate; ///< a PKCS#12 file, for "tls"
    QString clientPassword;
};
