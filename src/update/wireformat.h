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
constexpr int blockSize = 1024;      ///< data bytes of every block but a file's last
constexpr int longestFileName = 127; ///< Latin-1 characters

/// One answer to a discovery: names and addresses, pairwise and in datagram order.
struct ServerList
{
    QStringList names;
    QList<QHostAddress> addresses;
};

/// The 140 bytes that ask every Corvid server of a subnet for its name.
QByteArray discoveryRequest();

/// One block of a file. `data` is cut to what the block can hold of the file.
struct FileBlock
{
    quint32 position = 0; ///< in bytes from the file's start
    quint32 total = 0;    ///< the file's size in bytes, not zero
    QByteArray data;      ///< at most `blockSize` bytes
};

/// The 140 bytes that ask a Corvid server for one block; at most `longestFileName` characters of the name.
QByteArray fileBlockRequest(const QString &fileName, quint32 position);

/// Nothing when the datagram is not a block of a file: another length, a command's magic, a total of zero.
std::optional<FileBlock> decodeFileBlock(const QByteArray &datagram);

/// Nothing when the datagram is not a server list. The entry count it states is bounded by the entries it
/// carries.
std::optional<ServerList> decodeServerList(const QByteArray &datagram);

} // namespace WireFormat
