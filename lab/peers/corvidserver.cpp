// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/corvidserver.h"

#include <QLoggingCategory>
#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

#include <algorithm>
#include <utility>

Q_LOGGING_CATEGORY(lcCorvidServer, "kt.lab.corvidserver")

CorvidServer::CorvidServer(QObject *parent)
    : QObject(parent)
{ }

CorvidServer::~CorvidServer() = default;

void CorvidServer::addServer(const QString &name, const QHostAddress &address)
{
    Peer *known = peerAt(address);
    if (!known) {
        m_peers.append(Peer{});
        known = &m_peers.last();
        known->address = address;
    }
    known->entries.append({name, address});
}

CorvidServer::Peer *CorvidServer::peerAt(const QHostAddress &address)
{
    const auto known = std::find_if(m_peers.begin(), m_peers.end(),
                                    [&](const Peer &peer) { return peer.address == address; });
    return known == m_peers.end() ? nullptr : &*known;
}

CorvidFiles &CorvidServer::files(const QHostAddress &address)
{
    return peerAt(address)->files;
}

void CorvidServer::setFaults(const QHostAddress &address, const CorvidFaults &faults)
{
    Peer *peer = peerAt(address);
    peer->faults = faults;
    peer->chance.seed(faults.seed);
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
    // Only a socket bound to all addresses receives broadcasts.
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
        if (!request)
            continue;
        const QHostAddress asked = socket->localAddress();
        if (request->kind == CorvidRequest::Kind::FileBlock) {
            const Peer *peer = peerAt(asked);
            if (peer && peer->faults.oneAtATime && socket->hasPendingDatagrams())
                continue;
            sendBlock(asked, *request, sender, port);
            continue;
        }
        QTimer::singleShot(m_replyDelay, this,
                           [this, asked, sender, port] { replyToDiscovery(asked, sender, port); });
    }
}

void CorvidServer::replyToDiscovery(const QHostAddress &askedServer, const QHostAddress &receiver,
                                    quint16 port)
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

void CorvidServer::sendBlock(const QHostAddress &askedServer, const CorvidRequest &request,
                             const QHostAddress &receiver, quint16 port)
{
    Peer *peer = peerAt(askedServer);
    if (!peer)
        return;
    const CorvidFaults &faults = peer->faults;
    const std::optional<CorvidFiles::Block> block = peer->files.block(request.fileName, request.position);
    const auto happens = [peer](int percentage) {
        return percentage > 0 && static_cast<int>(peer->chance.bounded(100)) < percentage;
    };
    if (!block || (faults.silentFrom >= 0 && request.position >= faults.silentFrom) || happens(faults.loss))
        return;
    const bool changed = faults.totalChangesFrom >= 0 && request.position >= faults.totalChangesFrom;
    const QByteArray reply = fileBlockReply(request.position, block->total + (changed ? 1 : 0), block->data);
    if (peer->heldBack.isEmpty() && happens(faults.reordering)) {
        peer->heldBack = reply;
        return;
    }
    peer->socket->writeDatagram(reply, receiver, port);
    if (happens(faults.duplicates))
        peer->socket->writeDatagram(reply, receiver, port);
    if (!peer->heldBack.isEmpty())
        peer->socket->writeDatagram(std::exchange(peer->heldBack, QByteArray()), receiver, port);
}
