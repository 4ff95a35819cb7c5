// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class QUdpSocket;

/// The device's one UDP endpoint. It finds the Corvid servers of the subnet: a discovery broadcasts a
/// question on every interface, collects answers for a second and hands on what came, be it nothing.
class TerminalServerModule : public QObject
{
    Q_OBJECT

public:
    static constexpr int discoveryWindowMs = 1000;

    explicit TerminalServerModule(QObject *parent = nullptr);

    /// Fills what it is given a pointer for from the addresses of this machine that are IPv4 and not
    /// loopback: the first such address, its netmask and hardware address, and all broadcast addresses.
    static void getNetworkInfo(QString *ip, QString *netmask, QString *mac, QList<QString> *broadcasts);

public slots:
    /// Binds the socket. A port that is taken leaves the endpoint deaf; the program goes on.
    bool open();
    void checkCommand();
    /// Starts a discovery, or starts it anew. `error` becomes 1 when a broadcast could not be sent.
    void findTerminalServer(int &error);
    /// Asks a Corvid server for one block of a file. Does nothing when `error` is not 0; `error` becomes 1
    /// when the request could not be sent or the file's name does not fit in it.
    void getUdpFileData(const UdpFileRequest &request, int &error);
    /// Adds the servers of one answer. The first answer for a name wins.
    void takeTsFindReplies(const QStringList &names, const QList<QHostAddress> &addresses);
    /// Ends the discovery.
    void takeServer();

signals:
    void hasTsFindReplies(const QStringList &names, const QList<QHostAddress> &addresses);
    void sendServerList(const QMap<QString, QHostAddress> &servers);
    void ask_HasUdpFileData(const UdpFileReply &reply);

private:
    bool sendToServer(const QByteArray &request, const QHostAddress &server);

    QTimer m_discoveryWindow;
    QUdpSocket *m_socket = nullptr;
    QMap<QString, QHostAddress> m_servers;
};
