// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/networkproperty.h"
#include "device/wifiitem.h"

#include <QJsonObject>
#include <QLatin1String>
#include <QList>
#include <QString>

/// The factory defaults of the configuration document.
namespace Defaults {

/// The version of the document's schema that this program writes.
constexpr int configurationVersion = 15;
/// The default "client mode".
inline constexpr QLatin1String clientMode("corvid");

/// The state of the network, which determines some defaults.
struct NetworkState
{
    bool wiredPresent = false;
    NetworkProperty wired;
    bool wirelessPresent = false;
    NetworkProperty wireless; ///< includes the associated network's name
    QList<WifiItem> scan;
};

/// The whole document of seventeen sections, with this host name and "network settings".
QJsonObject document(const QString &deviceName, const QJsonObject &networkSettings);
/// The default "network settings" for the current connections.
QJsonObject networkSettings(const NetworkState &state);
/// The wired interface's object.
QJsonObject wiredInterface(bool present, const NetworkProperty &property);
/// The wireless interface's object.
QJsonObject wirelessInterface(const NetworkState &state);

// Sections and objects that upgrades of older documents also use.
QJsonObject firmwareInfo();
QJsonObject keyboard();
QJsonObject management();
QJsonObject security();
QJsonObject dateTime();
QJsonObject shadowing();
QJsonObject proxy();
QJsonObject autoconnect(); ///< as in "corvid connection"; the broker's also has "desktop"
QJsonObject solvaConnection();
QJsonObject rdpConnection();
QJsonObject wirelessAuthentication(); ///< the members of "wlan" that never depend on the live network

} // namespace Defaults
