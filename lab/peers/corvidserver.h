// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/corvidfiles.h"
#include "lab-peers/corvidwire.h"

#include <QObject>
#include <QRandomGenerator>

class QUdpSocket;

// One or several Corvid servers, each with an address of its own, from which it answers. All of them hear the
// broadcast by which a device looks for servers; what is sent to one address, only that server hears.
class CorvidServer : public QObject
{
    Q_OBJECT

public:
    explicit CorvidServer(QObject *parent = nullptr);
    ~CorvidServer() override;

    // A server that announces itself under a name; a second call for an address adds an entry to its reply.
    void addServer(const QString &name, const QHostAddress &address);

    // Bytes that every server sends after each reply to a discovery, whatever they are.
    void addRawReply(const QByteArray &datagram);

    void setReplyDelay(int milliseconds) { m_replyDelay = milliseconds; }

    // What a server that was added hands out, and how badly.
    CorvidFiles &files(const QHostAddress &address);
    void setFaults(const QHostAddress &address, const CorvidFaults &faults);

    // Binds the sockets. With loopback addresses only, nothing beyond the loopback interface is bound.
    bool listen();
    QString errorString() const { return m_error; }

signals:
    // Every datagram that arrives, with the address it was sent to (the broadcast address for a broadcast).
    void requestReceived(const QByteArray &datagram, const QHostAddress &sender, quint16 senderPort,
                         const QHostAddress &destination);
    void replySent(const QHostAddress &server, const QHostAddress &receiver, quint16 receiverPort);

private:
    struct Peer
    {
        QHostAddress address;
        QVector<CorvidEntry> entries;
        QUdpSocket *socket = nullptr;
        CorvidFiles files;
        CorvidFaults faults;
        QRandomGenerator chance;
        QByteArray heldBack;
    };

    QUdpSocket *bind(const QHostAddress &address);
    void receive(QUdpSocket *socket);
    void answer(const QHostAddress &askedServer, const QHostAddress &receiver, quint16 port);
    void reply(const Peer &peer, const QHostAddress &receiver, quint16 port);
    Peer *peerAt(const QHostAddress &address);
    void sendBlock(const QHostAddress &askedServer, const CorvidRequest &request,
                   const QHostAddress &receiver, quint16 port);

    QVector<Peer> m_peers;
    QVector<QByteArray> m_rawReplies;
    int m_replyDelay = 0;
    QString m_error;
};
