// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/requests.h"

#include "update/consoleformat.h"

#include <QRandomGenerator>

namespace Requests {

namespace {

constexpr int tokenOffset = 24;
constexpr int tokenSize = 8;
constexpr int infoBlockSize = 292;

QByteArray token(const QByteArray &datagram)
{
    return datagram.mid(tokenOffset, tokenSize);
}

QByteArray withToken(QByteArray request)
{
    QByteArray bytes(tokenSize, '\0');
    QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
    return request.replace(tokenOffset, tokenSize, bytes);
}

bool isInfo(const QByteArray &reply)
{
    const auto info = ConsoleFormat::decodeDeviceInfo(reply);
    return info && info->version == ConsoleFormat::documentVersion
        && reply.size() == infoBlockSize + info->status.size();
}

bool isDocument(const QByteArray &reply)
{
    const auto document = ConsoleFormat::decodeDocumentReply(reply);
    return document
        && (document->result != 0 || reply.size() == ConsoleFormat::headerSize + document->text.size());
}

} // namespace

Request info(int tries)
{
    return {ConsoleFormat::request(ConsoleFormat::Command::DeviceInfo), isInfo, tries};
}

Request document(int tries)
{
    const QByteArray request = withToken(ConsoleFormat::request(ConsoleFormat::Command::GetJson));
    return {
        request,
        [request](const QByteArray &reply) { return token(reply) == token(request) && isDocument(reply); },
        tries};
}

Request merge(const QByteArray &json)
{
    const auto built = ConsoleFormat::setJsonRequest(json);
    Q_ASSERT(built);
    const QByteArray request = withToken(*built);
    return {request, [request](const QByteArray &reply) {
                return token(reply) == token(request) && ConsoleFormat::decodeMergeReply(reply);
            }};
}

Request action(const QByteArray &plain)
{
    const quint16 command = ConsoleFormat::decodeRequest(plain).command;
    // In an update from a URL, the URL takes up the place of the token.
    const bool byUrl = command == static_cast<quint16>(ConsoleFormat::Command::UpdateByUrl);
    const QByteArray request = byUrl ? plain : withToken(plain);
    return {request, [request, command](const QByteArray &reply) {
                const auto action = ConsoleFormat::decodeActionReply(reply);
                return action && action->command == command
                    && action->version == ConsoleFormat::documentVersion && token(reply) == token(request);
            }};
}

} // namespace Requests
