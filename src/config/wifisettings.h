// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/wifiitem.h"

#include <QJsonObject>

/// A Wi-Fi network as the configuration document keeps it.
namespace WifiSettings {

WifiItem read(const QJsonObject &wlan);
/// Writes the keys of the network and of its credentials, and no other.
void write(const WifiItem &item, QJsonObject &wlan);
/// What a user has entered to join a network goes into another record of the same network.
void copyCredentials(const WifiItem &from, WifiItem &to);
/// Gives a network the usual choices where a scan told nothing.
void complete(WifiItem &item);

} // namespace WifiSettings
