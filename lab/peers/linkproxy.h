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

// What a link does to the datagrams that cross it, each by itself and in either direction. Parts are in
// percent.
struct LinkFaults
{
    double dropped = 0;
    double duplicated = 0;
    double heldBack = 0; // by holdMs, so that later ones overtake them
    int holdMs = 20;
    int delayMs = 0; // of every datagram
    quint32 seed = 1;
};

// A bad link in front of a Corvid server. Devices know the server by the link's address: it listens there on
// the Corvid port, hears broadcasts, relays what comes to the server, and answers as the server would, with
// its own address in the lists of servers. The same seed and the same datagrams meet the same fate again.
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

    // `server` is best an address of the loopback interface, so that it does not hear the broadcasts itself.
    LinkProxy(const QHostAddress &server, const LinkFaults &faults, QObject *parent = nullptr);

    // Binds the Corvid port at this address; beyond the loopback interface also for broadcasts.
    bool listen(const QHostAddress &address);
    QString errorString() const { return m_error; }
    // What became of the devices' requests.
    Counts requests() const { return m_requests.counts; }

private:
    // Each has dice of its own, because which of the two comes first is chance.
    struct Direction
    {
        std::mt19937 dice;
        Counts counts;
    };

    QUdpSocket *bind(const QHostAddress &address);
    void takeRequests(QUdpSocket *socket);
    QUdpSocket *lineOf(const QHostAddress &device, quint16 port);
    void takeReplies(QUdpSocket *line, const QHostAddress &device, quint16 port);
    void cross(Direction *direction, const std::function<void()> &deliver);
    QByteArray asOwn(QByteArray reply) const;

    QHostAddress m_server;
    QHostAddress m_address;
    LinkFaults m_faults;
    Direction m_requests;
    Direction m_replies;
    QUdpSocket *m_front = nullptr;
    QHash<QPair<QHostAddress, quint16>, QUdpSocket *> m_lines; // to the server, one for each device
    QString m_error;
};
