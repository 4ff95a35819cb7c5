// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/linkproxy.h"

#include "lab-peers/corvidwire.h"

#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>
#include <QtEndian>

namespace {

constexpr quint32 serverListMagic = 0xAA550003;
constexpr int magicOffset = 12;
constexpr int entryOffset = 20;
constexpr int entrySize = 68;
constexpr int addressOffset = 64; // in an entry

/// The distributions of the standard library differ between implementations.
bool happens(std::mt19937 *dice, double percent)
{
    return static_cast<double>((*dice)()) / 4294967296.0 * 100 < percent;
}

} // namespace

LinkProxy::LinkProxy(const QHostAddress &server, const LinkFaults &faults, QObject *parent)
    : QObject(parent)
    , m_server(server)
    , m_faults(faults)
    , m_requests{std::mt19937(faults.seed), {}}
    , m_replies{std::mt19937(~faults.seed), {}}
{ }

bool LinkProxy::listen(const QHostAddress &address)
{
    m_address = address;
    m_front = bind(address);
    // Only a socket bound to all addresses receives broadcasts.
    return m_front && (address.isLoopback() || bind(QHostAddress(QHostAddress::AnyIPv4)));
}

QUdpSocket *LinkProxy::bind(const QHostAddress &address)
{
    auto *socket = new QUdpSocket(this);
    if (!socket->bind(address, corvidServerPort, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
        m_error = address.toString() + QStringLiteral(": ") + socket->errorString();
        delete socket;
        return nullptr;
    }
    connect(socket, &QUdpSocket::readyRead, this, [this, socket] { handleRequests(socket); });
    return socket;
}

void LinkProxy::handleRequests(QUdpSocket *socket)
{
    while (socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = socket->receiveDatagram();
        const std::optional<CorvidRequest> request = parseCorvidRequest(datagram.data());
        // The second socket is for broadcasts only, and devices broadcast only discoveries.
        if (socket != m_front && (!request || request->kind != CorvidRequest::Kind::Discovery))
            continue;
        QUdpSocket *line = lineOf(datagram.senderAddress(), static_cast<quint16>(datagram.senderPort()));
        cross(&m_requests, [this, line, bytes = datagram.data()] {
            line->writeDatagram(bytes, m_server, corvidServerPort);
        });
    }
}

QUdpSocket *LinkProxy::lineOf(const QHostAddress &device, quint16 port)
{
    QUdpSocket *&line = m_lines[{device, port}];
    if (!line) {
        line = new QUdpSocket(this);
        line->bind(m_server.isLoopback() ? QHostAddress(QHostAddress::LocalHost)
                                         : QHostAddress(QHostAddress::AnyIPv4));
        connect(line, &QUdpSocket::readyRead, this,
                [this, to = line, device, port] { handleReplies(to, device, port); });
    }
    return line;
}

void LinkProxy::handleReplies(QUdpSocket *line, const QHostAddress &device, quint16 port)
{
    while (line->hasPendingDatagrams()) {
        const QByteArray reply = asOwn(line->receiveDatagram().data());
        cross(&m_replies, [this, reply, device, port] { m_front->writeDatagram(reply, device, port); });
    }
}

/// Draws three numbers for every datagram, so that the fate of one does not change that of the next.
void LinkProxy::cross(Direction *direction, const std::function<void()> &deliver)
{
    const bool isDropped = happens(&direction->dice, m_faults.dropped);
    const bool isDuplicated = happens(&direction->dice, m_faults.duplicated);
    const bool isHeldBack = happens(&direction->dice, m_faults.heldBack);
    if (isDropped) {
        ++direction->counts.dropped;
        return;
    }
    ++direction->counts.passed;
    direction->counts.duplicated += isDuplicated ? 1 : 0;
    direction->counts.heldBack += isHeldBack ? 1 : 0;
    const int wait = m_faults.delayMs + (isHeldBack ? m_faults.holdMs : 0);
    for (int copy = 0; copy < (isDuplicated ? 2 : 1); ++copy) {
        if (wait > 0)
            QTimer::singleShot(wait, Qt::PreciseTimer, this, deliver);
        else
            deliver();
    }
}

QByteArray LinkProxy::asOwn(QByteArray reply) const
{
    if (reply.size() < entryOffset
        || qFromLittleEndian<quint32>(reply.constData() + magicOffset) != serverListMagic)
        return reply;
    for (int entry = entryOffset; entry + entrySize <= reply.size(); entry += entrySize) {
        char *address = reply.data() + entry + addressOffset;
        if (qFromBigEndian<quint32>(address) == m_server.toIPv4Address())
            qToBigEndian(m_address.toIPv4Address(), address);
    }
    return reply;
}
