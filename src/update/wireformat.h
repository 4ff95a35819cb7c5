// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QString>

#include <optional>

/// Encodes and decodes the datagrams between the device and Corvid servers. Integers are
/// little-endian; docs/console-protocol.md has the byte tables.
namespace WireFormat {

constexpr quint16 devicePort = 1027; ///< where the device listens
constexpr quint16 serverPort = 1283; ///< where Corvid servers listen
constexpr int receiveLimit = 4500;   ///< a longer datagram is cut
constexpr int blockSize = 1024;      ///< data bytes of every block but a file's last
constexpr int longestFileName = 127; ///< Latin-1 characters

/// One reply to a discovery: names and addresses in pairs, in datagram order.
struct ServerList
{
    QStringList names;
    QList<QHostAddress> addresses;
};

/// The 140-byte request that asks every Corvid server of a subnet for its name.
QByteArray discoveryRequest();

/// One block of a file.
struct FileBlock
{
    quint32 position = 0; ///< in bytes from the file's start
    quint32 total = 0;    ///< the file's size in bytes, not zero
    QByteArray data;      ///< at most `blockSize` bytes, and none beyond the file's end
};

/// The 140-byte request for one block; contains at most `longestFileName` characters of the name.
QByteArray fileBlockRequest(const QString &fileName, quint32 position);

/// Returns nothing if the datagram is not a block: wrong length, a command's magic, or a total of zero.
std::optional<FileBlock> decodeFileBlock(const QByteArray &datagram);

/// Returns nothing if the datagram is not a server list. Reads no more entries than the datagram contains,
/// whatever count it states.
std::optional<ServerList> decodeServerList(const QByteArray &datagram);

} // namespace WireFormat
