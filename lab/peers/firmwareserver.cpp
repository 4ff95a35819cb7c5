// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/firmwareserver.h"

#include "lab-peers/filesender.h"

#include <QFileInfo>
#include <QTcpSocket>

FirmwareServer::FirmwareServer(const QString &folder, QObject *parent)
    : HttpPeer(parent)
    , m_folder(QFileInfo(folder).canonicalFilePath())
{
    setEncrypted(false);
}

std::optional<FirmwareServer::Mode> FirmwareServer::modeOf(const QString &word)
{
    static const QHash<QString, Mode> words{
        {QStringLiteral("normal"), Mode::Normal},       {QStringLiteral("slow"), Mode::Slow},
        {QStringLiteral("truncated"), Mode::Truncated}, {QStringLiteral("stalled"), Mode::Stalled},
        {QStringLiteral("silent"), Mode::Silent},       {QStringLiteral("challenge"), Mode::Challenge},
        {QStringLiteral("redirect"), Mode::Redirect},   {QStringLiteral("404"), Mode::NotFound},
        {QStringLiteral("500"), Mode::Error},
    };
    const auto found = words.find(word);
    return found == words.end() ? std::nullopt : std::make_optional(*found);
}

void FirmwareServer::setUser(const QString &name, const QString &password)
{
    m_credentials = (name + QLatin1Char(':') + password).toUtf8();
}

void FirmwareServer::setPace(int pieceBytes, int pauseMs)
{
    m_pieceBytes = pieceBytes;
    m_pauseMs = pauseMs;
}

int FirmwareServer::respond(QTcpSocket *socket, const HttpRequest &request)
{
    if (m_mode == Mode::Silent)
        return 0;
    const QString file = fileOf(request.target);
    const int code = status(request, file);
    if (code == 200)
        sendFile(socket, file);
    else if (code == 401)
        socket->write(head(code, 0, "WWW-Authenticate: Basic realm=\"firmware\"\r\n"));
    else if (code == 302)
        socket->write(head(code, 0, "Location: " + m_redirect.toEncoded() + "\r\n"));
    else
        socket->write(head(code, 0));
    return code;
}

int FirmwareServer::status(const HttpRequest &request, const QString &file) const
{
    if (m_mode == Mode::Challenge || !isAllowed(request))
        return 401;
    if (m_mode == Mode::Error)
        return 500;
    if (m_mode == Mode::Redirect)
        return 302;
    if (request.method != QLatin1String("GET"))
        return 405;
    return file.isEmpty() || m_mode == Mode::NotFound ? 404 : 200;
}

/// Accepts both encodings that clients use for characters beyond ASCII.
bool FirmwareServer::isAllowed(const HttpRequest &request) const
{
    return m_credentials.isEmpty() || request.credentials == m_credentials
        || QString::fromLatin1(request.credentials) == QString::fromUtf8(m_credentials);
}

/// Returns an empty path for a file outside the folder, whether through ".." or through a link.
QString FirmwareServer::fileOf(const QString &target) const
{
    const QString path = QUrl::fromEncoded(target.toLatin1()).path(QUrl::FullyDecoded);
    const QFileInfo file(m_folder + QLatin1Char('/') + path);
    const bool isInside = file.canonicalFilePath().startsWith(m_folder + QLatin1Char('/'));
    return isInside && file.isFile() ? file.canonicalFilePath() : QString();
}

void FirmwareServer::sendFile(QTcpSocket *socket, const QString &name) const
{
    const qint64 size = QFileInfo(name).size();
    socket->write(head(200, size, "Content-Type: application/octet-stream\r\n"));
    auto *sender = new FileSender(name, socket);
    if (m_mode == Mode::Slow)
        sender->setPace(m_pieceBytes, m_pauseMs);
    if (m_mode == Mode::Truncated || m_mode == Mode::Stalled)
        sender->setEnd(size / 2, m_mode == Mode::Truncated);
    sender->start();
}
