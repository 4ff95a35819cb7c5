// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QString>

#include <optional>

/// The datagrams that the device and Corvid servers exchange, as pure functions on bytes. Integers are
/// little-endian; docs/console-protocol.md has the byte tables.
namespace WireFormat {

constexpr quint16 devicePort = 1027; ///< where the device listens
constexpr quint16 serverPort = 1283; ///< where Corvid servers listen
constexpr int receiveLimit = 4500;   ///< a longer datagram is cut

/// One answer to a discovery: names and addresses, pairwise and in datagram order.
struct ServerList
{
    QStringList names;
    QList<QHostAddress> addresses;
};

/// The 140 bytes that ask every Corvid server of a subnet for its name.
QByteArray discoveryRequest();

/// Nothing when the datagram is not a server list. The entry count it states is bounded by the entries it
/// carries.
std::optional<ServerList> decodeServerList(const QByteArray &datagram);

} // namespace WireFormat
