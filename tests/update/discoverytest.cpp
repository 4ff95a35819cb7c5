// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/devicestatus.h"
#include "update/terminalservermodule.h"

#include "lab-peers/corvidserver.h"
#include "onlyinnamespace.h"

#include <QNetworkProxy>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QUdpSocket>

namespace {

using ServerMap = QMap<QString, QHostAddress>;

const QHostAddress first("10.77.0.21");
const QHostAddress second("10.77.0.22");
const QString office = "Office";
const QString ward = "Ward 3";

int find(TerminalServerModule &endpoint)
{
    int error = 0;
    endpoint.findTerminalServer(error);
    return error;
}

/// The map that a discovery ends with.
ServerMap found(TerminalServerModule &endpoint)
{
    QSignalSpy ended(&endpoint, &TerminalServerModule::sendServerList);
    if (find(endpoint) != 0 || !ended.wait(TestGroup::waitMs()))
        return {{"no discovery", QHostAddress()}};
    return ended.at(0).at(0).value<ServerMap>();
}

} // namespace

Q_DECLARE_METATYPE(QHostAddress)

/// The search for Corvid servers, against servers in the lab's network namespace.
class DiscoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<QHostAddress>();
        qRegisterMetaType<ServerMap>("QMap<QString,QHostAddress>");
    }

    void asksTheSubnetOnce()
    {
        CorvidServer server;
        server.addServer(office, first);
        QVERIFY(server.listen());
        const QSignalSpy asked(&server, &CorvidServer::requestReceived);
        // No proxy carries datagrams; one that is in force for all else does not matter.
        QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, "10.77.0.99", 3128});
        DeviceStatus status;
        TerminalServerModule endpoint{status};
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QCOMPARE(found(endpoint), ServerMap({{office, first}}));
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.at(0).at(3).value<QHostAddress>(), QHostAddress("10.77.0.255"));
        QCOMPARE(asked.at(0).at(2).toInt(), 1027);
    }

    void survivesGarbage()
    {
        CorvidServer server;
        server.addServer(office, first);
        QByteArray lying = serverListReply({{ward, second}});
        lying.replace(16, 4, QByteArray(4, '\xff'));
        for (const QByteArray &bytes : {QByteArray(), QByteArray("x"), QByteArray(1036, '\xff'),
                                        QByteArray(60000, '\xaa'), lying.left(40), lying})
            server.addRawReply(bytes);
        server.addServer(office, second); // the first answer for a name counts
        QVERIFY(server.listen());
        DeviceStatus status;
        TerminalServerModule endpoint{status};
        QCOMPARE(found(endpoint), ServerMap({{office, first}, {ward, second}}));
    }

    void countsTheRepliesOfOneDiscovery()
    {
        DeviceStatus status;
        TerminalServerModule endpoint{status};
        const QSignalSpy ended(&endpoint, &TerminalServerModule::sendServerList);
        QCOMPARE(find(endpoint), 0);
        endpoint.takeTsFindReplies({office}, {first});
        QCOMPARE(find(endpoint), 0);
        endpoint.takeTsFindReplies({ward}, {second});
        QTRY_COMPARE(ended.size(), 1);
        QCOMPARE(ended.at(0).at(0).value<ServerMap>(), ServerMap({{ward, second}}));
        QCOMPARE(found(endpoint), ServerMap());
        endpoint.takeTsFindReplies({office}, {first}); // too late
        endpoint.takeServer();
        QCOMPARE(ended.last().at(0).value<ServerMap>(), ServerMap());
    }

    void failsWithoutABroadcastAddress()
    {
        QCOMPARE(QProcess::execute("ip", {"addr", "flush", "dev", "eth0"}), 0);
        DeviceStatus status;
        TerminalServerModule endpoint{status};
        const QSignalSpy ended(&endpoint, &TerminalServerModule::sendServerList);
        QCOMPARE(find(endpoint), 1);
        QTRY_COMPARE(ended.size(), 1); // whoever waits for the answer gets one
    }
};

QTEST_GUILESS_MAIN(DiscoveryTest)
#include "discoverytest.moc"
