// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "models/item.h"

/// One Wi-Fi network with its credentials, as a list row with the network's name.
class WifiItem : public Item
{
public:
    explicit WifiItem(const QString &essid = QString());

    QString essid() const { return getValue(Name); }
    void setEssid(const QString &essid) { setValue(Name, essid); }

    QString bssid;
    int channel = 0;
    QString mode;
    int signalStrength = 0; ///< percent
    QString security;       ///< "open", "personal" or "enterprise"
    QString encrypt;        ///< "auto", "tkip" or "ccmp"
    QString enctype;
    QString advancedSecurity;     ///< "auto", "wpa" or "wpa2"
    QString password;             ///< the personal pass phrase
    QString authenticationMethod; ///< "peap", "ttls" or "tls"
    QString userName;
    QString userPassword;
    QString caCert; ///< a name in the store of CA certificates, with its leading separator; empty for none
    QString clientCert; ///< the name of a client certificate without its ".p12"
    QString clientCertPassword;
    bool hidden = false; ///< the network does not announce its name
};

/// Whether `a` has the stronger signal; sorts lists of networks.
bool compareSignalStrengthDesc(const WifiItem &a, const WifiItem &b);
