// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/jsonmodule.h"
#include "update/udpfile.h"

#include <QHostAddress>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class DeviceStatus;
class QUdpSocket;

/// The device's one UDP endpoint.
///
/// A management console reads the device's status and its document here, merges a part into the document,
/// resets the device and starts firmware updates. The endpoint itself changes nothing: whoever receives its
/// signals does, and writes the result, 0 for done, that the console is told.
///
/// It also finds the Corvid servers of the subnet: a discovery broadcasts a question on every interface,
/// collects answers for a second and hands on what came, be it nothing.
class TerminalServerModule : public QObject
{
    Q_OBJECT

public:
    static constexpr int discoveryWindowMs = 1000;
    static constexpr int turnMs = 20;

    /// `status` outlives the endpoint.
    explicit TerminalServerModule(DeviceStatus &status, QObject *parent = nullptr);

    /// Fills what it is given a pointer for from the addresses of this machine that are IPv4 and not
    /// loopback: the first such address, its netmask and hardware address, and all broadcast addresses.
    static void getNetworkInfo(QString *ip, QString *netmask, QString *mac, QList<QString> *broadcasts);

public slots:
    /// Binds the socket. A port that is taken leaves the endpoint deaf; the program goes on.
    bool open();
    /// Handles what has arrived, for at most `turnMs`: a flood leaves the window its time.
    void checkCommand();
    /// While disabled, consoles are not answered; what comes from Corvid servers is still taken.
    void enableComunication(bool enabled);
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
    void firmwareUpdateLatest(int *result);
    void firmwareUpdateURL(const QString &url, const QString &password, const QString &user,
                           const QString &file, int *result);
    void firmwareUpdateCORVID(const QString &server, const QString &file, int *result);
    void ask_resetDevice();
    void check_resetPossible(int *result);
    /// A partial document is to be merged. `result` holds the reset check's answer.
    void saveConfiguration(const QJsonObject &remote, int *result);
    /// What was merged is to be applied; the console has its answer.
    void applyConfig();

private:
    struct Peer
    {
        QHostAddress address;
        quint16 port = 0;
    };

    void takeDatagram(const QByteArray &datagram);
    static bool isADevice(const Peer &peer);
    void takeCommand(const QByteArray &request);
    void replyDeviceInfo(const QByteArray &request);
    void resetDevice(const QByteArray &request);
    void udpUpdate(const QByteArray &request);
    void urlUpdate(const QByteArray &request);
    void getJSONConfiguration(const QByteArray &request);
    void setJSONPartialConfiguration(const QByteArray &request);
    void reply(const QByteArray &datagram, const char *operation);
    void replyTo(const Peer &peer, const QByteArray &datagram, const char *operation);
    bool sendToServer(const QByteArray &request, const QHostAddress &server, const char *operation);

    JsonModule m_configuration;
    QTimer m_discoveryWindow;
    QUdpSocket *m_socket = nullptr;
    QMap<QString, QHostAddress> m_servers;
    DeviceStatus &m_status;
    Peer m_sender;          ///< of the datagram that is being handled
    int m_awaitingInfo = 0; ///< consoles whose request for the status waits for the device's tools
    bool m_enabled = true;
};
