// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/discovery.h"

#include "console/requests.h"

#include "update/consoleformat.h"

#include <QJsonDocument>
#include <QNetworkDatagram>

namespace {

/// Hundreds of devices reply at the same moment. The system may grant less.
constexpr int receiveBuffer = 4 * 1024 * 1024;

} // namespace

Discovery::Discovery(const QList<QHostAddress> &broadcasts, quint16 port, int timeoutMs, int tries,
                     QObject *parent)
    : QObject(parent)
    , m_broadcasts(broadcasts)
    , m_port(port)
    , m_roundsLeft(tries)
    , m_request(Requests::info(1))
{
    m_roundTimer.setInterval(timeoutMs / tries);
    connect(&m_roundTimer, &QTimer::timeout, this, &Discovery::send);
    connect(&m_socket, &QUdpSocket::readyRead, this, &Discovery::receive);
}

void Discovery::start()
{
    if (!m_socket.bind(QHostAddress(QHostAddress::AnyIPv4))) {
        emit failed(m_socket.errorString());
        return;
    }
    m_socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, receiveBuffer);
    m_roundTimer.start();
    send();
}

void Discovery::send()
{
    if (m_roundsLeft-- == 0) {
        m_roundTimer.stop();
        emit ended();
        return;
    }
    int sent = 0;
    for (const QHostAddress &broadcast : qAsConst(m_broadcasts)) {
        if (m_socket.writeDatagram(m_request.datagram, broadcast, m_port) == m_request.datagram.size())
            ++sent;
    }
    if (sent > 0)
        return;
    m_roundTimer.stop();
    emit failed(m_socket.errorString());
}

void Discovery::receive()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        const QHostAddress device(datagram.senderAddress().toIPv4Address());
        if (!m_roundTimer.isActive() || datagram.senderPort() != m_port || !m_request.isReply(datagram.data())
            || m_found.contains(device))
            continue;
        m_found += device;
        Result result;
        result.device = device;
        const auto info = ConsoleFormat::decodeDeviceInfo(datagram.data());
        result.report = QJsonDocument::fromJson(info->status).object();
        if (result.report.isEmpty())
            result.outcome = Outcome::Unusable;
        emit found(result);
    }
}
