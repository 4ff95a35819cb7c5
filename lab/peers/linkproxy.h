// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QHostAddress>
#include <QObject>

#include <functional>
#include <random>

class QNetworkDatagram;
class QUdpSocket;

/// The faults of a link, in percent of the datagrams of each direction.
struct LinkFaults
{
    double dropped = 0;
    double duplicated = 0;
    double heldBack = 0; ///< by holdMs, so that later datagrams overtake them
    int holdMs = 20;
    int delayMs = 0; ///< of every datagram
    quint32 seed = 1;
};

/// A bad link in front of a Corvid server. The link listens on the Corvid port at an address of its own and
/// receives broadcasts. It forwards requests to the server and replies to the devices. In server lists it
/// replaces the server's address by its own. The same seed has the same effect on the same datagrams.
class LinkProxy : public QObject
{
    Q_OBJECT

public:
    struct Counts
    {
        int passed = 0;
        int dropped = 0;
        int duplicated = 0;
        int heldBack = 0;
    };

    /// `server` should be an address of the loopback interface, so that the server itself receives no
    /// broadcasts.
    LinkProxy(const QHostAddress &server, const LinkFaults &faults, QObject *parent = nullptr);

    /// Binds the Corvid port at this address, and for broadcasts unless it is a loopback address.
    bool listen(const QHostAddress &address);
    QString errorString() const { return m_error; }
    /// Counts the faults of the devices' requests.
    Counts requests() const { return m_requests.counts; }

private:
    /// Each direction has its own generator, because the order of requests and replies varies.
    struct Direction
    {
        std::mt19937 dice;
        Counts counts;
    };

    QUdpSocket *bind(const QHostAddress &address);
    void handleRequests(QUdpSocket *socket);
    QUdpSocket *lineOf(const QHostAddress &device, quint16 port);
    void handleReplies(QUdpSocket *line, const QHostAddress &device, quint16 port);
    void cross(Direction *direction, const std::function<void()> &deliver);
    QByteArray asOwn(QByteArray reply) const;

    QHostAddress m_server;
    QHostAddress m_address;
    LinkFaults m_faults;
    Direction m_requests;
    Direction m_replies;
    QUdpSocket *m_front = nullptr;
    QHash<QPair<QHostAddress, quint16>, QUdpSocket *> m_lines; ///< to the server, one for each device
    QString m_error;
};
