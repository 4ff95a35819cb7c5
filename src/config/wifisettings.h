// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/wifiitem.h"

#include <QJsonObject>

/// Reads and writes a Wi-Fi network in the configuration document.
namespace WifiSettings {

WifiItem read(const QJsonObject &wlan);
/// Writes only the keys of the network and its credentials.
void write(const WifiItem &item, QJsonObject &wlan);
/// Copies the user's input to another record of the same network.
void copyCredentials(const WifiItem &from, WifiItem &to);
/// Sets the usual values that a scan did not report.
void complete(WifiItem &item);

} // namespace WifiSettings
