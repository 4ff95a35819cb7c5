// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/asker.h"

#include <QNetworkDatagram>

namespace {

// A document fills many packets: several answers may stand in line while we are busy.
constexpr int receiveBuffer = 256 * 1024;

} // namespace

Asker::Asker(const Endpoint &device, int timeoutMs, QObject *parent)
    : QObject(parent)
    , m_device(device)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(timeoutMs);
    connect(&m_patience, &QTimer::timeout, this, &Asker::timeOut);
    connect(&m_socket, &QUdpSocket::readyRead, this, &Asker::receive);
}

void Asker::ask(const Question &question)
{
    m_question = question;
    m_triesLeft = question.tries;
    if (m_socket.state() != QAbstractSocket::BoundState) {
        if (!m_socket.bind(QHostAddress(QHostAddress::AnyIPv4))) {
            emit failed(m_socket.errorString());
            return;
        }
        m_socket.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, receiveBuffer);
    }
    send();
}

void Asker::send()
{
    --m_triesLeft;
    const qint64 sent = m_socket.writeDatagram(m_question.datagram, m_device.address, m_device.port);
    if (sent == m_question.datagram.size()) {
        m_patience.start();
        return;
    }
    m_patience.stop();
    emit failed(m_socket.errorString());
}

void Asker::receive()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        const bool ours = m_patience.isActive() && datagram.senderPort() == m_device.port
            && datagram.senderAddress().isEqual(m_device.address, QHostAddress::ConvertV4MappedToIPv4);
        if (!ours || !m_question.isAnswer(datagram.data()))
            continue;
        m_patience.stop();
        emit answered(datagram.data());
    }
}

void Asker::timeOut()
{
    if (m_triesLeft > 0)
        send();
    else
        emit unanswered();
}
