// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/wireformat.h"

#include <QtEndian>

namespace WireFormat {

namespace {

constexpr int clientDatagramSize = 140;
constexpr quint32 clientMark = 0xFFFF; // at offset 4 of every datagram to a server
constexpr quint32 findServers = 3;
constexpr quint32 wantBlock = 5;
constexpr int fileNameOffset = 12;

constexpr int totalOffset = 4;
constexpr int blockDataOffset = 12;
constexpr int blockDatagramSize = blockDataOffset + blockSize;

constexpr int magicOffset = 12;
constexpr quint32 commandMagic = 0xAA550000; // its low 8 bits tell the kind
constexpr quint32 commandMagicMask = 0xFFFFFF00;
constexpr quint32 serverListMagic = 0xAA550003;
constexpr int countOffset = 16;
constexpr int entriesOffset = 20;
constexpr int nameUnits = 32; // UTF-16 code units
constexpr int entrySize = nameUnits * 2 + 4;

quint32 read32(const QByteArray &bytes, int offset)
{
    return offset + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + offset) : 0;
}

void write32(QByteArray &bytes, int offset, quint32 value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

QString readName(const QByteArray &bytes, int offset)
{
    QString name;
    for (int unit = 0; unit < nameUnits; ++unit) {
        const auto code = qFromLittleEndian<quint16>(bytes.constData() + offset + unit * 2);
        if (code == 0)
            break;
        name += QChar(code);
    }
    return name;
}

} // namespace

QByteArray discoveryRequest()
{
    QByteArray datagram(clientDatagramSize, '\0');
    write32(datagram, 4, clientMark);
    write32(datagram, 8, findServers);
    return datagram;
}

QByteArray fileBlockRequest(const QString &fileName, quint32 position)
{
    QByteArray datagram(clientDatagramSize, '\0');
    write32(datagram, 0, position);
    write32(datagram, 4, clientMark);
    write32(datagram, 8, wantBlock);
    const QByteArray name = fileName.left(longestFileName).toLatin1();
    return datagram.replace(fileNameOffset, name.size(), name);
}

std::optional<FileBlock> decodeFileBlock(const QByteArray &datagram)
{
    if (datagram.size() != blockDatagramSize
        || (read32(datagram, magicOffset) & commandMagicMask) == commandMagic)
        return std::nullopt;
    FileBlock block;
    block.position = read32(datagram, 0);
    block.total = read32(datagram, totalOffset);
    if (block.total == 0)
        return std::nullopt;
    const quint32 left = block.total > block.position ? block.total - block.position : 0;
    block.data = datagram.mid(blockDataOffset, static_cast<int>(qMin(left, quint32(blockSize))));
    return block;
}

std::optional<ServerList> decodeServerList(const QByteArray &datagram)
{
    if (read32(datagram, magicOffset) != serverListMagic)
        return std::nullopt;
    const auto carried = static_cast<quint32>(qMax(0, datagram.size() - entriesOffset) / entrySize);
    const int count = static_cast<int>(qMin(read32(datagram, countOffset), carried));
    ServerList list;
    for (int entry = 0; entry < count; ++entry) {
        const int offset = entriesOffset + entry * entrySize;
        list.names += readName(datagram, offset);
        // Only the address is in network byte order.
        list.addresses
            += QHostAddress(qFromBigEndian<quint32>(datagram.constData() + offset + nameUnits * 2));
    }
    return list;
}

} // namespace WireFormat
