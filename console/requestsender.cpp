// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/requestsender.h"

#include <QNetworkDatagram>

namespace {

/// A document fills many packets, so several replies may wait while the event loop is busy.
constexpr int receiveBuffer = 256 * 1024;

} // namespace

RequestSender::RequestSender(const Endpoint &device, int timeoutMs, QObject *parent)
    : QObject(parent)
    , m_device(device)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    connect(&m_timeout, &QTimer::timeout, this, &RequestSender::handleTimeout);
    connect(&m_socket, &QUdpSocket::readyRead, this, &RequestSender::receive);
}

void RequestSender::send(const Request &request)
{
    m_request = request;
    m_triesLeft = request.tries;
    if (m_socket.state() != QAbstractSocket::BoundState) {
        if (!m_socket.bind(QHostAddress(QHostAddress::AnyIPv4))) {
            emit failed(m_socket.errorString());
            return;
        }
        m_socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, receiveBuffer);
    }
    sendDatagram();
}

void RequestSender::sendDatagram()
{
    --m_triesLeft;
    const qint64 sent = m_socket.writeDatagram(m_request.datagram, m_device.address, m_device.port);
    if (sent == m_request.datagram.size()) {
        m_timeout.start();
        return;
    }
    m_timeout.stop();
    emit failed(m_socket.errorString());
}

void RequestSender::receive()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        const bool fromDevice = m_timeout.isActive() && datagram.senderPort() == m_device.port
            && datagram.senderAddress().isEqual(m_device.address, QHostAddress::ConvertV4MappedToIPv4);
        if (!fromDevice || !m_request.isReply(datagram.data()))
            continue;
        m_timeout.stop();
        emit replied(datagram.data());
    }
}

void RequestSender::handleTimeout()
{
    if (m_triesLeft > 0)
        sendDatagram();
    else
        emit timedOut();
}
