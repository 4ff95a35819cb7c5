// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QNetworkInterface>
#include <QNetworkProxy>

/// The proxy of every connection that the program makes, and the hosts that are reached without it.
namespace ApplicationProxy {

/// The stored "proxy" settings as a proxy; none where they are not enabled.
QNetworkProxy fromSettings(const QJsonObject &proxy);
/// Puts the stored settings in force for the whole process: the proxy, and whether local hosts are reached
/// without it. Returns true when they differ from before.
bool install(const QJsonObject &proxy);
/// True when the settings in force reach a host without the proxy.
bool goesDirect(const QString &host);

/// True for a host of the device's own networks: an address in a subnet of an interface, or a name that only
/// the local network knows, which is one without a dot or one that ends in ".local". No name is looked up:
/// that would take time, and would ask servers outside.
bool isLocal(const QString &host);
bool isLocal(const QString &host, const QList<QNetworkAddressEntry> &own);

/// True when a server, named as the user typed it, is to be reached without the proxy of these settings.
bool bypassedFor(const QString &server, const QJsonObject &proxy);

} // namespace ApplicationProxy
