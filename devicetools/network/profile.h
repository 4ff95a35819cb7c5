// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/addressing.h"
#include "network-tools/wifinetwork.h"

#include <NetworkManagerQt/GenericTypes>

#include <optional>

/// What we store in NetworkManager: one profile for each of the two interfaces. The device connects by them
/// when it starts, without the launcher.
namespace Profile {

extern const QString wiredUuid;
extern const QString wirelessUuid;

/// `enabled`: NetworkManager connects the interface whenever it can.
NMVariantMapMap wired(const Addressing &addressing, bool enabled);

/// The contents of the certificates of a network.
struct Certificates
{
    QByteArray authority; ///< PEM or DER
    QByteArray client;    ///< PKCS#12
};

/// `keyManagement` is the protocol that proves the key, as `keyManagementFor` chooses it.
NMVariantMapMap wireless(const WifiNetwork &network, const Certificates &certificates,
                         const QString &keyManagement, const Addressing &addressing, bool enabled);

/// What an access point says of its security.
struct AccessPointFlags
{
    bool privacy = false;
    quint32 wpa = 0; ///< NetworkManager::AccessPoint::WpaFlags
    quint32 rsn = 0;
};

/// The protocol for this network: of a known access point one that it has.
QString keyManagementFor(WifiNetwork::Security security, const std::optional<AccessPointFlags> &accessPoint);

} // namespace Profile
