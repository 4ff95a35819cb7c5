// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/questions.h"

#include "update/consoleformat.h"

#include <QRandomGenerator>

namespace Questions {

namespace {

constexpr int tokenOffset = 24;
constexpr int tokenSize = 8;
constexpr int infoBlockSize = 292;

QByteArray token(const QByteArray &datagram)
{
    return datagram.mid(tokenOffset, tokenSize);
}

QByteArray marked(QByteArray request)
{
    QByteArray bytes(tokenSize, '\0');
    QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
    return request.replace(tokenOffset, tokenSize, bytes);
}

bool isInfo(const QByteArray &answer)
{
    const auto info = ConsoleFormat::decodeDeviceInfo(answer);
    return info && info->version == ConsoleFormat::documentVersion
        && answer.size() == infoBlockSize + info->status.size();
}

bool isDocument(const QByteArray &answer)
{
    const auto document = ConsoleFormat::decodeDocumentReply(answer);
    return document
        && (document->result != 0 || answer.size() == ConsoleFormat::headerSize + document->text.size());
}

} // namespace

Question info(int tries)
{
    return {ConsoleFormat::request(ConsoleFormat::Command::DeviceInfo), isInfo, tries};
}

Question document(int tries)
{
    const QByteArray request = marked(ConsoleFormat::request(ConsoleFormat::Command::GetJson));
    return {
        request,
        [request](const QByteArray &answer) { return token(answer) == token(request) && isDocument(answer); },
        tries};
}

Question merge(const QByteArray &json)
{
    const auto built = ConsoleFormat::setJsonRequest(json);
    Q_ASSERT(built);
    const QByteArray request = marked(*built);
    return {request, [request](const QByteArray &answer) {
                return token(answer) == token(request) && ConsoleFormat::decodeMergeReply(answer);
            }};
}

Question action(const QByteArray &plain)
{
    const quint16 command = ConsoleFormat::decodeRequest(plain).command;
    // An update from a URL has its URL where the others have room.
    const bool byUrl = command == static_cast<quint16>(ConsoleFormat::Command::UpdateByUrl);
    const QByteArray request = byUrl ? plain : marked(plain);
    return {request, [request, command](const QByteArray &answer) {
                const auto reply = ConsoleFormat::decodeActionReply(answer);
                return reply && reply->command == command && reply->version == ConsoleFormat::documentVersion
                    && token(answer) == token(request);
            }};
}

} // namespace Questions
