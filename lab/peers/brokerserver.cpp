// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/brokerserver.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>

namespace {

const QString listTarget = QStringLiteral("/_mpcdesktops?version=v3");

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

QByteArray line(const BrokerDesktop &desktop)
{
    return QStringLiteral("name:%1|address:%2|protocol:RDP").arg(desktop.name, desktop.address).toUtf8();
}

} // namespace

struct BrokerServer::Request
{
    QString method;
    QString target;
    QByteArray credentials; // "user:password", as the client encoded it

    static Request parse(const QByteArray &head);
    QString user() const;
};

BrokerServer::Request BrokerServer::Request::parse(const QByteArray &head)
{
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.constFirst().trimmed().split(' ');
    Request request{QString::fromLatin1(words.value(0)), QString::fromLatin1(words.value(1)), {}};
    for (const QByteArray &header : lines) {
        const QByteArray value = header.mid(header.indexOf(':') + 1).trimmed();
        if (header.toLower().startsWith("authorization:") && value.toLower().startsWith("basic "))
            request.credentials = QByteArray::fromBase64(value.mid(6));
    }
    return request;
}

QString BrokerServer::Request::user() const
{
    return credentials.isEmpty() ? QStringLiteral("-")
                                 : QString::fromUtf8(credentials.left(credentials.indexOf(':')));
}

BrokerServer::BrokerServer(QObject *parent)
    : TlsServer(parent)
{ }

bool BrokerServer::modeOf(const QString &word, Mode *mode)
{
    static const QVector<QPair<const char *, Mode>> words{
        {"normal", Mode::Normal},
        {"slow", Mode::Slow},
        {"500", Mode::Error},
        {"cut", Mode::Cut},
        {"huge", Mode::Huge},
        {"empty", Mode::Empty},
        {"no-line-ends", Mode::NoLineEnds},
    };
    for (const auto &entry : words) {
        if (word == QLatin1String(entry.first)) {
            *mode = entry.second;
            return true;
        }
    }
    return false;
}

void BrokerServer::addUser(const QString &name, const QString &password,
                           const QVector<BrokerDesktop> &desktops)
{
    m_users.append({name, password, desktops});
}

void BrokerServer::receive(QTcpSocket *socket)
{
    const QByteArray seen = socket->peek(longestHead);
    const int end = seen.indexOf("\r\n\r\n");
    if (end < 0) {
        if (seen.size() == longestHead)
            socket->abort();
        return;
    }
    const Request request = Request::parse(socket->read(end + 4));
    const QPointer<QTcpSocket> client(socket);
    const int delay = m_mode == Mode::Slow ? m_delay : 0;
    QTimer::singleShot(delay, this, [this, client, request] {
        if (client && client->state() == QAbstractSocket::ConnectedState)
            answer(client, request);
    });
}

void BrokerServer::answer(QTcpSocket *socket, const Request &request)
{
    const User *user = userOf(request);
    const int code = status(request, user);
    const QString entry
        = QStringLiteral("%1 %2 %3 %4").arg(request.method, request.target, request.user()).arg(code);
    m_requests.append(entry);
    emit requestReceived(entry);
    send(socket, code, code == 200 ? list(*user) : QByteArray());
}

int BrokerServer::status(const Request &request, const User *user) const
{
    if (m_mode == Mode::Error)
        return 500;
    if (m_mode == Mode::Redirect)
        return 302;
    if (request.method != QLatin1String("GET"))
        return 405;
    if (request.target != listTarget)
        return 404;
    return user ? 200 : 401;
}

// What ASCII does not hold, clients encode in either of two ways.
const BrokerServer::User *BrokerServer::userOf(const Request &request) const
{
    const auto known = std::find_if(m_users.begin(), m_users.end(), [&request](const User &user) {
        const QString credentials = user.name + QLatin1Char(':') + user.password;
        return QString::fromUtf8(request.credentials) == credentials
            || QString::fromLatin1(request.credentials) == credentials;
    });
    return known == m_users.end() ? nullptr : &*known;
}

QByteArray BrokerServer::list(const User &user) const
{
    if (!m_body.isEmpty() || m_mode == Mode::Empty)
        return m_body;
    QVector<BrokerDesktop> desktops = user.desktops;
    while (m_mode == Mode::Huge && desktops.size() < hugeList)
        desktops.append({QStringLiteral("Desktop %1").arg(desktops.size() + 1), QStringLiteral("192.0.2.1")});
    QByteArray body;
    for (const BrokerDesktop &desktop : qAsConst(desktops))
        body += line(desktop) + (m_mode == Mode::NoLineEnds ? "" : "\n");
    return body;
}

void BrokerServer::send(QTcpSocket *socket, int status, const QByteArray &body) const
{
    const bool cut = m_mode == Mode::Cut && status == 200;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n";
    if (status == 401)
        head += "WWW-Authenticate: Basic realm=\"SOLVA\"\r\n";
    if (status == 302)
        head += "Location: " + m_redirect.toEncoded() + "\r\n";
    head += "Content-Type: text/plain; charset=utf-8\r\nContent-Length: " + QByteArray::number(body.size())
        + "\r\n\r\n";
    socket->write(head + (cut ? body.left(body.size() / 2) : body));
    socket->flush();
    if (cut)
        socket->disconnectFromHost();
}
