// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/httppeer.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 302:
        return "Found";
    case 401:
        return "Unauthorized";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    default:
        return "Internal Server Error";
    }
}

HttpRequest HttpRequest::parse(const QByteArray &head)
{
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.constFirst().trimmed().split(' ');
    HttpRequest request{QString::fromLatin1(words.value(0)), QString::fromLatin1(words.value(1)), {}};
    for (const QByteArray &header : lines) {
        const QByteArray value = header.mid(header.indexOf(':') + 1).trimmed();
        if (header.toLower().startsWith("authorization:") && value.toLower().startsWith("basic "))
            request.credentials = QByteArray::fromBase64(value.mid(6));
    }
    return request;
}

QString HttpRequest::user() const
{
    return credentials.isEmpty() ? QStringLiteral("-")
                                 : QString::fromUtf8(credentials.left(credentials.indexOf(':')));
}

void HttpPeer::receive(QTcpSocket *socket)
{
    const QByteArray seen = socket->peek(longestHead);
    const int end = seen.indexOf("\r\n\r\n");
    if (end < 0) {
        if (seen.size() == longestHead)
            socket->abort();
        return;
    }
    const HttpRequest request = HttpRequest::parse(socket->read(end + 4));
    const QPointer<QTcpSocket> client(socket);
    QTimer::singleShot(replyDelay(), this, [this, client, request] {
        if (client && client->state() == QAbstractSocket::ConnectedState)
            reply(client, request);
    });
}

void HttpPeer::reply(QTcpSocket *socket, const HttpRequest &request)
{
    const int status = respond(socket, request);
    const QString line
        = QStringLiteral("%1 %2 %3 %4").arg(request.method, request.target, request.user()).arg(status);
    m_requests.append(line);
    emit requestReceived(line);
}

QByteArray HttpPeer::head(int status, qint64 length, const QByteArray &furtherLines)
{
    return "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n" + furtherLines
        + "Content-Length: " + QByteArray::number(length) + "\r\n\r\n";
}
