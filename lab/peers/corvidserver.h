// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/corvidfiles.h"
#include "lab-peers/corvidwire.h"

#include <QObject>
#include <QRandomGenerator>

class QUdpSocket;

/// One or several Corvid servers. Each replies from its own address. All of them receive a device's
/// broadcasts; a datagram for one address reaches only that server.
class CorvidServer : public QObject
{
    Q_OBJECT

public:
    explicit CorvidServer(QObject *parent = nullptr);
    ~CorvidServer() override;

    /// Adds a server with a name. A second call for an address adds an entry to that server's reply.
    void addServer(const QString &name, const QHostAddress &address);

    /// Adds a datagram that every server sends after each reply to a discovery.
    void addRawReply(const QByteArray &datagram);

    void setReplyDelay(int milliseconds) { m_replyDelay = milliseconds; }

    /// Return and set the files and the faults of an added server.
    CorvidFiles &files(const QHostAddress &address);
    void setFaults(const QHostAddress &address, const CorvidFaults &faults);

    /// Binds the sockets. With loopback addresses only, it binds only the loopback interface.
    bool listen();
    QString errorString() const { return m_error; }

signals:
    /// Emitted for every datagram; the destination of a broadcast is the broadcast address.
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
    void replyToDiscovery(const QHostAddress &askedServer, const QHostAddress &receiver, quint16 port);
    void reply(const Peer &peer, const QHostAddress &receiver, quint16 port);
    Peer *peerAt(const QHostAddress &address);
    void sendBlock(const QHostAddress &askedServer, const CorvidRequest &request,
                   const QHostAddress &receiver, quint16 port);

    QVector<Peer> m_peers;
    QVector<QByteArray> m_rawReplies;
    int m_replyDelay = 0;
    QString m_error;
};
