// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <QUdpSocket>

#include <functional>

/// The address and port on which a device listens.
struct Endpoint
{
    QHostAddress address;
    quint16 port = 0;
};

/// A request datagram, and the test that recognizes its reply.
struct Request
{
    QByteArray datagram;
    std::function<bool(const QByteArray &)> isReply;
    int tries = 1; ///< one for a request that must not be carried out twice
};

/// Sends requests to one device. Retries a request at each time-out, until a reply arrives or its tries are
/// used up. Ignores datagrams from other addresses and ports, and datagrams that are not replies.
class RequestSender : public QObject
{
    Q_OBJECT

public:
    RequestSender(const Endpoint &device, int timeoutMs, QObject *parent = nullptr);

    /// Sends a request. The previous one must have ended.
    void send(const Request &request);

signals:
    void replied(const QByteArray &reply);
    void timedOut();
    /// The request cannot be sent.
    void failed(const QString &error);

private:
    void sendDatagram();
    void receive();
    void handleTimeout();

    Endpoint m_device;
    QUdpSocket m_socket;
    QTimer m_timeout;
    Request m_request;
    int m_triesLeft = 0;
};
