// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/brokerserver.h"

#include <QHash>
#include <QTcpSocket>

#include <algorithm>

namespace {

const QString listTarget = QStringLiteral("/_mpcdesktops?version=v3");

QByteArray line(const BrokerDesktop &desktop)
{
    return QStringLiteral("name:%1|address:%2|protocol:RDP").arg(desktop.name, desktop.address).toUtf8();
}

} // namespace

BrokerServer::BrokerServer(QObject *parent)
    : HttpPeer(parent)
{ }

std::optional<BrokerServer::Mode> BrokerServer::modeOf(const QString &word)
{
    static const QHash<QString, Mode> words{
        {QStringLiteral("normal"), Mode::Normal},
        {QStringLiteral("slow"), Mode::Slow},
        {QStringLiteral("500"), Mode::Error},
        {QStringLiteral("cut"), Mode::Cut},
        {QStringLiteral("huge"), Mode::Huge},
        {QStringLiteral("empty"), Mode::Empty},
        {QStringLiteral("no-line-ends"), Mode::NoLineEnds},
    };
    const auto found = words.find(word);
    return found == words.end() ? std::nullopt : std::make_optional(*found);
}

void BrokerServer::addUser(const QString &name, const QString &password,
                           const QVector<BrokerDesktop> &desktops)
{
    m_users.append({name, password, desktops});
}

int BrokerServer::respond(QTcpSocket *socket, const HttpRequest &request)
{
    const User *user = userOf(request);
    const int code = status(request, user);
    send(socket, code, code == 200 ? list(*user) : QByteArray());
    return code;
}

int BrokerServer::status(const HttpRequest &request, const User *user) const
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

/// Accepts both encodings that clients use for characters beyond ASCII.
const BrokerServer::User *BrokerServer::userOf(const HttpRequest &request) const
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
    QByteArray further = "Content-Type: text/plain; charset=utf-8\r\n";
    if (status == 401)
        further += "WWW-Authenticate: Basic realm=\"SOLVA\"\r\n";
    if (status == 302)
        further += "Location: " + m_redirect.toEncoded() + "\r\n";
    socket->write(head(status, body.size(), further) + (cut ? body.left(body.size() / 2) : body));
    socket->flush();
    if (cut)
        socket->disconnectFromHost();
}
