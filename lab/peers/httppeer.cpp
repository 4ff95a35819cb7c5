// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/httppeer.h"

#include <QPointer>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTimer>

namespace {

constexpr int longestHead = 16 * 1024;

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

} // namespace

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

HttpPeer::HttpPeer(QObject *parent)
    : QTcpServer(parent)
{ }

bool HttpPeer::start(const QHostAddress &address, quint16 port)
{
    if (m_encrypted && !makeCertificate())
        return false;
    if (listen(address, port))
        return true;
    m_fault = QStringLiteral("%1 port %2: %3").arg(address.toString()).arg(port).arg(errorString());
    return false;
}

// The key and the certificate come through a pipe: nothing of them is left anywhere.
bool HttpPeer::makeCertificate()
{
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  QProcess::splitCommand(QStringLiteral(
                      "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 30"
                      " -subj \"/CN=A server of the lab\" -keyout /dev/stdout -out /dev/stdout")));
    openssl.waitForFinished();
    const QByteArray made = openssl.readAllStandardOutput();
    m_key = QSslKey(made, QSsl::Ec);
    m_certificate = QSslCertificate(made);
    if (!m_key.isNull() && !m_certificate.isNull())
        return true;
    m_fault = QStringLiteral("openssl made no certificate: %1").arg(openssl.errorString());
    return false;
}

void HttpPeer::incomingConnection(qintptr descriptor)
{
    auto *socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { receive(socket); });
    if (!m_encrypted)
        return;
    socket->setLocalCertificate(m_certificate);
    socket->setPrivateKey(m_key);
    socket->startServerEncryption();
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
    const int status = answer(socket, request);
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
