// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/wireformat.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Encodes and decodes the datagrams between a management console and the device, for both sides. Integers
/// are little-endian; docs/console-protocol.md has the byte tables.
namespace ConsoleFormat {

enum class Command : quint16 {
    DeviceInfo = 1,
    Reset = 5,
    UpdateLatest = 7,
    UpdateByUrl = 8,
    GetJson = 19,
    SetJsonPartial = 21,
};

constexpr quint16 documentVersion = 0x0120; ///< the only version word accepted in a request for the document
constexpr int headerSize = 40;
constexpr int longestField = 63;                           ///< characters in a field of an update request
constexpr int longestSerial = 67;                          ///< characters of the serial number
constexpr int requestLimit = WireFormat::receiveLimit;     ///< the device truncates a longer request
constexpr int longestJson = requestLimit - headerSize - 1; ///< bytes of a partial document
constexpr int actionReplySize = 504;

/// The data of an update request. For a Corvid server, `url` is "CORVID://server".
struct UpdateSource
{
    QString url;
    QString user;
    QString password;
    QString file;
};

/// The header of every request.
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

/// The reply to a reset or an update.
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

// Requests, for the console.

/// A command without data.
QByteArray request(Command command, quint16 version = documentVersion);
/// Returns nothing if a field is too long or not ASCII.
std::optional<QByteArray> updateRequest(const UpdateSource &source, quint16 version = documentVersion);
/// Returns nothing if the text is longer than `longestJson` or contains a NUL.
std::optional<QByteArray> setJsonRequest(const QByteArray &json, quint16 version = documentVersion);

// Requests, for the device. The missing bytes of a short datagram read as zero, so every datagram decodes; no
// command has the number 0.

Request decodeRequest(const QByteArray &datagram);
UpdateSource decodeUpdateSource(const QByteArray &datagram);
/// Up to the first NUL, or to the datagram's end.
QByteArray decodeJsonText(const QByteArray &datagram);

// Replies, for the device. A reply contains the bytes of its request where it has no value of its own.

/// A serial number is cut to `longestSerial`.
QByteArray deviceInfoReply(const DeviceInfo &info);
QByteArray actionReply(const QByteArray &request, quint32 result);
QByteArray documentReply(const QByteArray &request, const QByteArray &text);
/// The reply to a request for the document with another version word: as long as the document's reply, but
/// empty.
QByteArray documentRefusal(const QByteArray &request, const QByteArray &text);
QByteArray mergeReply(const QByteArray &request, quint32 result);

/// Whether a datagram is one of these replies. A request to merge nothing looks like a reply and counts as
/// one; a reply with an empty document looks like a request and does not.
bool isAnswer(const QByteArray &datagram);

// Replies, for the console. Each returns nothing if the datagram is another reply: too short, without a mark,
// or with a length beyond its end.

std::optional<DeviceInfo> decodeDeviceInfo(const QByteArray &datagram);
std::optional<ActionReply> decodeActionReply(const QByteArray &datagram);
std::optional<DocumentReply> decodeDocumentReply(const QByteArray &datagram);
/// Returns the result: 0 if the document was merged.
std::optional<quint32> decodeMergeReply(const QByteArray &datagram);

} // namespace ConsoleFormat
