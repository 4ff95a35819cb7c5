// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

#include "lab-peers/corvidserver.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QTcpSocket>
#include <QTest>
#include <QUdpSocket>

#include <memory>

namespace {
const QHostAddress broadcast(QStringLiteral("10.77.0.255"));
const QHostAddress first(QStringLiteral("10.77.0.21"));
const QHostAddress second(QStringLiteral("10.77.0.22"));

QByteArray discovery()
{
    QByteArray bytes(corvidRequestSize, '\0');
    bytes.replace(4, 5, QByteArray("\xff\xff\0\0\x03", 5));
    return bytes;
}

QString nameIn(const QByteArray &reply, int entry)
{
    const QByteArray field = reply.mid(20 + 68 * entry, 64);
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(field.constData()), 32)
        .section(QChar(u'\0'), 0, 0);
}

QStringList liveAddresses()
{
    QStringList addresses;
    const QList<QNetworkAddressEntry> entries
        = QNetworkInterface::interfaceFromName(QStringLiteral("eth0")).addressEntries();
    for (const QNetworkAddressEntry &entry : entries)
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            addresses << QStringLiteral("%1/%2 %3")
                             .arg(entry.ip().toString())
                             .arg(entry.prefixLength())
                             .arg(entry.broadcast().toString());
    return addresses;
}

struct Request
{
    QByteArray bytes;
    QHostAddress destination;
};

// Collects what a server is asked.
QVector<Request> *recordRequests(CorvidServer *server)
{
    auto requests = std::make_shared<QVector<Request>>();
    QObject::connect(
        server, &CorvidServer::requestReceived, server,
        [requests](const QByteArray &bytes, const QHostAddress &, quint16, const QHostAddress &destination) {
            requests->append({bytes, destination});
        });
    return requests.get();
}

// The device's end of discovery.
class Station : public QObject
{
public:
    Station()
    {
        connect(&socket, &QUdpSocket::readyRead, this, [this] {
            while (socket.hasPendingDatagrams())
                replies.append(socket.receiveDatagram());
        });
    }

    bool bind() { return socket.bind(QHostAddress(QHostAddress::AnyIPv4), 1027); }
    void send(const QByteArray &bytes, const QHostAddress &to)
    {
        socket.writeDatagram(bytes, to, corvidServerPort);
    }

    QUdpSocket socket;
    QVector<QNetworkDatagram> replies;
};
} // namespace

// The peers and the real interface, inside the lab's network namespace.
class NetworkTest : public QObject
{
    Q_OBJECT

private slots:
    void everyServerAnswersABroadcast();
    void oneServerAnswersWhatIsSentToIt();
    void othersGetNoReply();
    void replyKeepsToItsFields();
    void serverCommand();
    void brokerCommand();
    void addressToolChangesTheRealInterface();
};

void NetworkTest::everyServerAnswersABroadcast()
{
    CorvidServer server;
    server.addServer(QStringLiteral("Reception"), first);
    server.addServer(QStringLiteral("Ward 3"), second);
    QVERIFY2(server.listen(), qPrintable(server.errorString()));
    const QVector<Request> *requests = recordRequests(&server);
    Station station;
    QVERIFY(station.bind());
    station.send(discovery(), broadcast);

    QTRY_COMPARE(station.replies.size(), 2);
    QCOMPARE(requests->size(), 1);
    QCOMPARE(requests->at(0).bytes, discovery());
    QCOMPARE(requests->at(0).destination, broadcast);
    const QByteArray reply = station.replies.at(1).data();
    QCOMPARE(reply.size(), 88);
    QCOMPARE(reply.mid(12, 8), QByteArray("\x03\0\x55\xaa\x01\0\0\0", 8));
    QCOMPARE(nameIn(reply, 0), QStringLiteral("Ward 3"));
    QCOMPARE(reply.mid(84), QByteArray("\x0a\x4d\0\x16", 4));
    QCOMPARE(station.replies.at(0).senderAddress(), first);
    QCOMPARE(station.replies.at(1).senderAddress(), second);
}

void NetworkTest::oneServerAnswersWhatIsSentToIt()
{
    CorvidServer server;
    server.addServer(QStringLiteral("Reception"), first);
    server.addServer(QStringLiteral("Ward 3"), second);
    server.addServer(QStringLiteral("Ward 3, second name"), second);
    server.addRawReply("odd");
    server.setReplyDelay(20);
    QVERIFY(server.listen());
    Station station;
    QVERIFY(station.bind());
    station.send(discovery(), second);
    QTRY_COMPARE(station.replies.size(), 2);
    QCOMPARE(station.replies.at(0).senderAddress(), second);
    QCOMPARE(nameIn(station.replies.at(0).data(), 1), QStringLiteral("Ward 3, second name"));
    QCOMPARE(station.replies.at(1).data(), QByteArray("odd"));
}

void NetworkTest::othersGetNoReply()
{
    CorvidServer server;
    server.addServer(QStringLiteral("Reception"), first);
    server.addServer(QStringLiteral("Ward 3"), second);
    QVERIFY(server.listen());
    const QVector<Request> *requests = recordRequests(&server);
    Station station;
    QVERIFY(station.bind());
    QByteArray unmarked = discovery();
    unmarked[4] = 1;
    QByteArray otherKind = discovery();
    otherKind[8] = 9;
    for (const QByteArray &bytes :
         {discovery().left(139), discovery() + 'x', QByteArray(), unmarked, otherKind})
        station.send(bytes, first);
    station.send(discovery(), second);
    // Replies keep the order of the requests, so no other one can still be under way.
    QTRY_VERIFY(!station.replies.isEmpty() && station.replies.constLast().senderAddress() == second);
    QCOMPARE(station.replies.size(), 1);
    QCOMPARE(requests->size(), 6);

    QByteArray block = discovery();
    block.replace(0, 9, QByteArray("\0\x04\0\0\xff\xff\0\0\x05", 9)).replace(12, 128, QByteArray(128, 'n'));
    const std::optional<CorvidRequest> request = parseCorvidRequest(block);
    QVERIFY(request && request->kind == CorvidRequest::Kind::FileBlock);
    QCOMPARE(request->position, 1024U);
    QCOMPARE(request->fileName, QString(128, QLatin1Char('n')));
}

void NetworkTest::replyKeepsToItsFields()
{
    const QByteArray reply = serverListReply({{QString(), QHostAddress()},
                                              {QString(32, QChar(0x20ac)), first},
                                              {QString(40, QLatin1Char('x')), second}});
    QCOMPARE(reply.size(), 20 + 3 * 68);
    QCOMPARE(reply.mid(20, 68), QByteArray(68, '\0'));
    QCOMPARE(nameIn(reply, 1), QString(32, QChar(0x20ac)));
    QCOMPARE(nameIn(reply, 2), QString(32, QLatin1Char('x')));
    QCOMPARE(reply.right(4), QByteArray("\x0a\x4d\0\x16", 4));
}

void NetworkTest::serverCommand()
{
    QProcess command;
    command.start(
        qEnvironmentVariable("KT_BIN_DIR") + QStringLiteral("/kt-lab"),
        QProcess::splitCommand(QStringLiteral("corvid-server --address 10.77.0.23,10.77.0.24 --entries 60"
                                              " --name \"Training Room\" --count 1 --seconds 30")));
    QByteArray printed;
    QTRY_VERIFY((printed += command.readAllStandardOutput()).contains("ready\n"));
    Station station;
    QVERIFY(station.bind());
    station.send(discovery(), broadcast);
    QTRY_COMPARE(station.replies.size(), 2);
    QCOMPARE(station.replies.at(0).data().size(), 20 + 60 * 68);
    QCOMPARE(nameIn(station.replies.at(0).data(), 0), QStringLiteral("Training Room"));
    QTRY_COMPARE(command.state(), QProcess::NotRunning);
    QCOMPARE(command.exitCode(), 0);
}

void NetworkTest::brokerCommand()
{
    QProcess command;
    command.start(qEnvironmentVariable("KT_BIN_DIR") + QStringLiteral("/kt-lab"),
                  QProcess::splitCommand(
                      QStringLiteral("broker --plain --address 10.77.0.21 --seconds 30 --user nurse:a:Office"
                                     " --user \"teacher:b c:Training Room=10.77.0.23:3390,Accounts\"")));
    QByteArray printed;
    QTRY_VERIFY((printed += command.readAllStandardOutput()).contains("ready\n"));
    QTcpSocket device;
    device.connectToHost(first, 8443);
    device.write("GET /_mpcdesktops?version=v3 HTTP/1.1\r\nAuthorization: Basic "
                 + QByteArray("teacher:b c").toBase64() + "\r\n\r\n");
    QByteArray reply;
    QTRY_VERIFY((reply += device.readAll()).endsWith("\nname:Accounts|address:10.77.0.21|protocol:RDP\n"));
    QVERIFY(reply.contains("\r\n\r\nname:Training Room|address:10.77.0.23:3390|protocol:RDP\n"));
    QTRY_COMPARE(printed += command.readAllStandardOutput(),
                 QByteArray("ready\nGET /_mpcdesktops?version=v3 teacher 200\n"));
    command.kill();
    QVERIFY(command.waitForFinished());
}

void NetworkTest::addressToolChangesTheRealInterface()
{
    const LabDevice device;
    const QStringList lease{QStringLiteral("10.77.0.10/24 10.77.0.255")};
    device.call("kt-ip-settings -d eth0 10.77.0.10 24");
    QCOMPARE(liveAddresses(), lease);

    device.call("kt-ip-settings -a eth0 10.77.0.10 24");
    device.write("lab/live-network", QByteArray());
    device.call("kt-ip-settings -d eth0 10.77.0.10 24");
    QCOMPARE(liveAddresses(), QStringList());
    device.call("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255");
    QCOMPARE(liveAddresses(), lease);
    device.networkConfig("disconnect-ethernet");
    QCOMPARE(liveAddresses(), QStringList());
    device.networkConfig("connect-ethernet");
    QCOMPARE(liveAddresses(), lease);
}

QTEST_GUILESS_MAIN(NetworkTest)
#include "networktest.moc"
