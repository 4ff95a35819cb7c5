// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/consoleformat.h"

#include <QtEndian>

#include <algorithm>

namespace ConsoleFormat {

namespace {

constexpr quint32 magic = 0xAA550000; // its low 8 bits tell the kind
constexpr quint32 actionMark = 0x33333333;
constexpr int lengthOffset = 8;
constexpr int actionOffset = 8;
constexpr int magicOffset = 12;
constexpr int commandOffset = 16;
constexpr int versionOffset = 18;
constexpr int clearedOffset = 20;
constexpr int resultOffset = 32;
constexpr int versionCopyOffset = 36;

constexpr int fieldSize = longestField + 1;
constexpr int urlOffset = 20;
constexpr int userOffset = urlOffset + fieldSize;
constexpr int passwordOffset = userOffset + fieldSize;
constexpr int fileOffset = passwordOffset + fieldSize;

constexpr int infoSize = 292;
constexpr int infoKindOffset = 8;
constexpr quint16 infoKind = 5;
constexpr int infoVersionOffset = 10;
constexpr int infoConstantOffset = 12;
constexpr quint32 infoConstant = 500;
constexpr int serialOffset = 112;
constexpr int firstMarkOffset = 180;
constexpr int statusLengthOffset = 200;
constexpr int secondMarkOffset = 288;
constexpr quint32 infoMark = 0x45787449;

/// Bytes beyond the end count as zero.
template <typename Integer>
Integer read(const QByteArray &bytes, int offset)
{
    const QByteArray field = bytes.mid(offset, sizeof(Integer)).leftJustified(sizeof(Integer), '\0');
    return qFromLittleEndian<Integer>(field.constData());
}

template <typename Integer>
void write(QByteArray &bytes, int offset, Integer value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

/// The bytes from `offset` up to a NUL, at most `size` of them.
QByteArray readText(const QByteArray &bytes, int offset, int size)
{
    const QByteArray field = bytes.mid(offset, size);
    const int end = field.indexOf('\0');
    return end < 0 ? field : field.left(end);
}

/// The first `size` bytes of a request, padded with zeros.
QByteArray resized(const QByteArray &request, int size)
{
    return request.left(size).leftJustified(size, '\0');
}

bool fitsField(const QString &text)
{
    return text.size() <= longestField
        && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c > QChar(0) && c < QChar(0x80); });
}

bool isActionWithReply(quint16 command)
{
    return command == static_cast<quint16>(Command::Reset)
        || command == static_cast<quint16>(Command::UpdateLatest)
        || command == static_cast<quint16>(Command::UpdateByUrl);
}

} // namespace

QByteArray request(Command command, quint16 version)
{
    QByteArray datagram(headerSize, '\0');
    write(datagram, magicOffset, magic);
    write(datagram, commandOffset, static_cast<quint16>(command));
    write(datagram, versionOffset, version);
    return datagram;
}

std::optional<QByteArray> updateRequest(const UpdateSource &source, quint16 version)
{
    QByteArray datagram = resized(request(Command::UpdateByUrl, version), fileOffset + fieldSize);
    int offset = urlOffset;
    for (const QString &field : {source.url, source.user, source.password, source.file}) {
        if (!fitsField(field))
            return std::nullopt;
        datagram.replace(offset, field.size(), field.toLatin1());
        offset += fieldSize;
    }
    return datagram;
}

std::optional<QByteArray> setJsonRequest(const QByteArray &json, quint16 version)
{
    if (json.size() > longestJson || json.contains('\0'))
        return std::nullopt;
    return request(Command::SetJsonPartial, version) + json + '\0';
}

Request decodeRequest(const QByteArray &datagram)
{
    return {read<quint16>(datagram, commandOffset), read<quint16>(datagram, versionOffset)};
}

UpdateSource decodeUpdateSource(const QByteArray &datagram)
{
    const auto field = [&datagram](int offset) {
        return QString::fromLatin1(readText(datagram, offset, fieldSize));
    };
    return {field(urlOffset), field(userOffset), field(passwordOffset), field(fileOffset)};
}

QByteArray decodeJsonText(const QByteArray &datagram)
{
    return readText(datagram, headerSize, datagram.size());
}

QByteArray deviceInfoReply(const DeviceInfo &info)
{
    QByteArray block(infoSize, '\0');
    write(block, infoKindOffset, infoKind);
    write(block, infoVersionOffset, info.version);
    write(block, infoConstantOffset, infoConstant);
    const QByteArray serial = info.serialNumber.left(longestSerial).toLatin1();
    block.replace(serialOffset, serial.size(), serial);
    write(block, firstMarkOffset, infoMark);
    write(block, statusLengthOffset, static_cast<quint32>(info.status.size()));
    write(block, secondMarkOffset, infoMark);
    return block + info.status;
}

QByteArray actionReply(const QByteArray &request, quint32 result)
{
    const Request header = decodeRequest(request);
    QByteArray reply = resized(request, actionReplySize);
    write(reply, 0, actionMark);
    write(reply, 4, actionMark);
    write(reply, actionOffset, quint32(header.version) << 16 | header.command);
    write(reply, clearedOffset, quint32(0));
    write(reply, resultOffset, result);
    write(reply, versionCopyOffset, quint32(header.version));
    return reply;
}

QByteArray documentReply(const QByteArray &request, const QByteArray &text)
{
    QByteArray reply = resized(request, headerSize);
    write(reply, lengthOffset, static_cast<quint32>(text.size()));
    write(reply, resultOffset, quint32(0));
    return reply + text;
}

QByteArray documentRefusal(const QByteArray &request, const QByteArray &text)
{
    QByteArray reply = resized(request, headerSize);
    write(reply, lengthOffset, quint32(0));
    write(reply, resultOffset, quint32(1));
    return reply + QByteArray(text.size(), '\0');
}

QByteArray mergeReply(const QByteArray &request, quint32 result)
{
    QByteArray reply = resized(request, headerSize);
    write(reply, lengthOffset, quint32(0));
    write(reply, resultOffset, result);
    return reply;
}

bool isAnswer(const QByteArray &datagram)
{
    switch (static_cast<Command>(decodeRequest(datagram).command)) {
    case Command::Reset:
    case Command::UpdateLatest:
    case Command::UpdateByUrl:
        return read<quint32>(datagram, 0) == actionMark && read<quint32>(datagram, 4) == actionMark;
    case Command::GetJson:
        return read<quint32>(datagram, lengthOffset) != 0 || read<quint32>(datagram, resultOffset) != 0;
    case Command::SetJsonPartial:
        return datagram.size() <= headerSize;
    case Command::DeviceInfo:
        break;
    }
    return decodeDeviceInfo(datagram).has_value();
}

std::optional<DeviceInfo> decodeDeviceInfo(const QByteArray &datagram)
{
    if (datagram.size() < infoSize || read<quint16>(datagram, infoKindOffset) != infoKind
        || read<quint32>(datagram, firstMarkOffset) != infoMark
        || read<quint32>(datagram, secondMarkOffset) != infoMark)
        return std::nullopt;
    const quint32 length = read<quint32>(datagram, statusLengthOffset);
    if (length > static_cast<quint32>(datagram.size() - infoSize))
        return std::nullopt;
    DeviceInfo info;
    info.version = read<quint16>(datagram, infoVersionOffset);
    info.serialNumber = QString::fromLatin1(readText(datagram, serialOffset, longestSerial));
    info.status = datagram.mid(infoSize, static_cast<int>(length));
    return info;
}

std::optional<ActionReply> decodeActionReply(const QByteArray &datagram)
{
    if (datagram.size() != actionReplySize || read<quint32>(datagram, 0) != actionMark
        || read<quint32>(datagram, 4) != actionMark)
        return std::nullopt;
    const quint32 action = read<quint32>(datagram, actionOffset);
    const ActionReply reply{static_cast<quint16>(action & 0xFFFF), static_cast<quint16>(action >> 16),
                            read<quint32>(datagram, resultOffset)};
    return isActionWithReply(reply.command) ? std::make_optional(reply) : std::nullopt;
}

std::optional<DocumentReply> decodeDocumentReply(const QByteArray &datagram)
{
    if (datagram.size() < headerSize
        || decodeRequest(datagram).command != static_cast<quint16>(Command::GetJson))
        return std::nullopt;
    const quint32 length = read<quint32>(datagram, lengthOffset);
    if (length > static_cast<quint32>(datagram.size() - headerSize))
        return std::nullopt;
    return DocumentReply{read<quint32>(datagram, resultOffset),
                         datagram.mid(headerSize, static_cast<int>(length))};
}

std::optional<quint32> decodeMergeReply(const QByteArray &datagram)
{
    if (datagram.size() != headerSize
        || decodeRequest(datagram).command != static_cast<quint16>(Command::SetJsonPartial))
        return std::nullopt;
    return read<quint32>(datagram, resultOffset);
}

} // namespace ConsoleFormat
