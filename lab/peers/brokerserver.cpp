// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/brokerserver.h"

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

int BrokerServer::answer(QTcpSocket *socket, const HttpRequest &request)
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

// What ASCII does not hold, clients encode in either of two ways.
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
