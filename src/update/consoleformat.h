// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/wireformat.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The datagrams that a management console and the device exchange, both directions, as pure functions on
/// bytes. Integers are little-endian; docs/console-protocol.md has the byte tables.
namespace ConsoleFormat {

enum class Command : quint16 {
    DeviceInfo = 1,
    Reset = 5,
    UpdateLatest = 7,
    UpdateByUrl = 8,
    GetJson = 19,
    SetJsonPartial = 21,
};

constexpr quint16 documentVersion = 0x0120; ///< the one version word that a document is read with
constexpr int headerSize = 40;
constexpr int longestField = 63;                           ///< characters of an update's field
constexpr int longestSerial = 67;                          ///< characters of the serial number
constexpr int requestLimit = WireFormat::receiveLimit;     ///< the device cuts a longer request
constexpr int longestJson = requestLimit - headerSize - 1; ///< bytes of a partial document
constexpr int actionReplySize = 504;

/// What a command to update from a URL carries. A server found by name stands in `url` as "CORVID://server".
struct UpdateSource
{
    QString url;
    QString user;
    QString password;
    QString file;
};

/// What every request starts with.
struct Request
{
    quint16 command = 0; ///< not always one of `Command`
    quint16 version = 0;
};

struct DeviceInfo
{
    quint16 version = 0; ///< the request's
    QString serialNumber;
    QByteArray status; ///< JSON text
};

/// The answer to a reset or an update.
struct ActionReply
{
    quint16 command = 0;
    quint16 version = 0; ///< the request's
    quint32 result = 0;  ///< 0: accepted
};

struct DocumentReply
{
    quint32 result = 0; ///< 0: `text` is the document
    QByteArray text;
};

// What a console sends.

/// A command without data.
QByteArray request(Command command, quint16 version = documentVersion);
/// Nothing when a field is too long or is not ASCII.
std::optional<QByteArray> updateRequest(const UpdateSource &source, quint16 version = documentVersion);
/// Nothing when the text is longer than `longestJson` or has a NUL in it.
std::optional<QByteArray> setJsonRequest(const QByteArray &json, quint16 version = documentVersion);

// What the device reads from it. Bytes that a short datagram lacks read as zero, so every datagram is a
// request of some command; 0 is none.

Request decodeRequest(const QByteArray &datagram);
UpdateSource decodeUpdateSource(const QByteArray &datagram);
/// Up to the first NUL, or to the datagram's end.
QByteArray decodeJsonText(const QByteArray &datagram);

// What the device answers. An answer is made of its request's bytes, as far as it is not its own.

/// A serial number is cut to `longestSerial`.
QByteArray deviceInfoReply(const DeviceInfo &info);
QByteArray actionReply(const QByteArray &request, quint32 result);
QByteArray documentReply(const QByteArray &request, const QByteArray &text);
/// The answer to a request for the document with another version word: as long as the document's, and empty.
QByteArray documentRefusal(const QByteArray &request, const QByteArray &text);
QByteArray mergeReply(const QByteArray &request, quint32 result);

/// Whether a datagram is one of these answers, or a merge of nothing, which looks the same. The answer that
/// holds an empty document is the one that does not show it.
bool isAnswer(const QByteArray &datagram);

// What a console reads from it. Nothing when the datagram is not that answer: too short, no mark where one
// belongs, a length that it does not carry.

std::optional<DeviceInfo> decodeDeviceInfo(const QByteArray &datagram);
std::optional<ActionReply> decodeActionReply(const QByteArray &datagram);
std::optional<DocumentReply> decodeDocumentReply(const QByteArray &datagram);
/// The result: 0 when the document was merged.
std::optional<quint32> decodeMergeReply(const QByteArray &datagram);

} // namespace ConsoleFormat
