// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/corvidwire.h"

#include <QtEndian>

namespace {

constexpr quint32 requestMarker = 0xFFFF;
constexpr quint32 serverListMagic = 0xAA550003;
constexpr int fileNameOffset = 12;
constexpr int blockDataOffset = 12;
constexpr int entryOffset = 20;
constexpr int entrySize = 68;
constexpr int nameUnits = 32;

quint32 numberAt(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

void putNumber(QByteArray *bytes, int offset, quint32 number)
{
    qToLittleEndian(number, bytes->data() + offset);
}

void putEntry(QByteArray *bytes, int offset, const CorvidEntry &entry)
{
    for (int unit = 0; unit < qMin(nameUnits, entry.name.size()); ++unit)
        qToLittleEndian<quint16>(entry.name.at(unit).unicode(), bytes->data() + offset + 2 * unit);
    qToBigEndian<quint32>(entry.address.toIPv4Address(), bytes->data() + offset + 2 * nameUnits);
}

} // namespace

std::optional<CorvidRequest> parseCorvidRequest(const QByteArray &datagram)
{
    if (datagram.size() != corvidRequestSize || numberAt(datagram, 4) != requestMarker)
        return std::nullopt;
    CorvidRequest request;
    request.kind = static_cast<CorvidRequest::Kind>(numberAt(datagram, 8));
    if (request.kind != CorvidRequest::Kind::Discovery && request.kind != CorvidRequest::Kind::FileBlock)
        return std::nullopt;
    request.position = numberAt(datagram, 0);
    const QByteArray name = datagram.mid(fileNameOffset);
    request.fileName
        = QString::fromLatin1(name.constData(), static_cast<int>(qstrnlen(name.constData(), 128)));
    return request;
}

QByteArray serverListReply(const QVector<CorvidEntry> &entries)
{
    QByteArray reply(entryOffset + entrySize * entries.size(), '\0');
    putNumber(&reply, 12, serverListMagic);
    putNumber(&reply, 16, static_cast<quint32>(entries.size()));
    for (int i = 0; i < entries.size(); ++i)
        putEntry(&reply, entryOffset + entrySize * i, entries.at(i));
    return reply;
}

QByteArray fileBlockReply(quint32 position, quint32 total, const QByteArray &data)
{
    QByteArray reply(blockDataOffset + corvidBlockSize, '\0');
    putNumber(&reply, 0, position);
    putNumber(&reply, 4, total);
    const QByteArray block = data.left(corvidBlockSize);
    return reply.replace(blockDataOffset, block.size(), block);
}
