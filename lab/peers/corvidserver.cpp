// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/corvidserver.h"

#include <QLoggingCategory>
#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

#include <algorithm>

Q_LOGGING_CATEGORY(lcCorvidServer, "kt.lab.corvidserver")

CorvidServer::CorvidServer(QObject *parent)
    : QObject(parent)
{ }

CorvidServer::~CorvidServer() = default;

void CorvidServer::addServer(const QString &name, const QHostAddress &address)
{
    const auto known = std::find_if(m_peers.begin(), m_peers.end(),
                                    [&](const Peer &peer) { return peer.address == address; });
    if (known != m_peers.end())
        known->entries.append({name, address});
    else
        m_peers.append({address, {{name, address}}, nullptr});
}

void CorvidServer::addRawReply(const QByteArray &datagram)
{
    m_rawReplies.append(datagram);
}

bool CorvidServer::listen()
{
    bool loopbackOnly = true;
    for (Peer &peer : m_peers) {
        peer.socket = bind(peer.address);
        if (!peer.socket)
            return false;
        loopbackOnly = loopbackOnly && peer.address.isLoopback();
    }
    // Broadcasts reach only a socket that is bound to no single address.
    return loopbackOnly || bind(QHostAddress(QHostAddress::AnyIPv4)) != nullptr;
}

QUdpSocket *CorvidServer::bind(const QHostAddress &address)
{
    auto *socket = new QUdpSocket(this);
    if (!socket->bind(address, corvidServerPort, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
        m_error = QStringLiteral("%1 port %2: %3")
                      .arg(address.toString())
                      .arg(corvidServerPort)
                      .arg(socket->errorString());
        delete socket;
        return nullptr;
    }
    connect(socket, &QUdpSocket::readyRead, this, [this, socket] { receive(socket); });
    return socket;
}

void CorvidServer::receive(QUdpSocket *socket)
{
    while (socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = socket->receiveDatagram();
        const QHostAddress sender = datagram.senderAddress();
        const auto port = static_cast<quint16>(datagram.senderPort());
        qCDebug(lcCorvidServer) << datagram.data().size() << "bytes from" << sender << port << "to"
                                << datagram.destinationAddress();
        emit requestReceived(datagram.data(), sender, port, datagram.destinationAddress());
        const std::optional<CorvidRequest> request = parseCorvidRequest(datagram.data());
        if (!request || request->kind != CorvidRequest::Kind::Discovery)
            continue;
        const QHostAddress asked = socket->localAddress();
        QTimer::singleShot(m_replyDelay, this, [this, asked, sender, port] { answer(asked, sender, port); });
    }
}

void CorvidServer::answer(const QHostAddress &askedServer, const QHostAddress &receiver, quint16 port)
{
    for (const Peer &peer : qAsConst(m_peers))
        if (askedServer == QHostAddress(QHostAddress::AnyIPv4) || askedServer == peer.address)
            reply(peer, receiver, port);
}

void CorvidServer::reply(const Peer &peer, const QHostAddress &receiver, quint16 port)
{
    if (peer.socket->writeDatagram(serverListReply(peer.entries), receiver, port) < 0)
        qCWarning(lcCorvidServer) << peer.address << "cannot reply:" << peer.socket->errorString();
    for (const QByteArray &raw : qAsConst(m_rawReplies))
        peer.socket->writeDatagram(raw, receiver, port);
    emit replySent(peer.address, receiver, port);
}
