// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/corvidserver.h"
#include "lab-peers/firmwareserver.h"
#include "lab-peers/linkproxy.h"
#include "testtable.h"

#include <QtNetwork>
#include <QtTest>

#include <algorithm>

using Mode = FirmwareServer::Mode;
Q_DECLARE_METATYPE(Mode)

namespace {

const QHostAddress linkAddress("10.77.0.22");
const QHostAddress hiddenServer("127.0.0.22");

QByteArray discovery(quint32 number)
{
    QByteArray bytes(corvidRequestSize, '\0');
    bytes.replace(4, 5, QByteArray("\xff\xff\0\0\x03", 5));
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// The numbers of the requests that a server hears through a link, in their order.
QVector<quint32> heard(const LinkFaults &faults, LinkProxy::Counts *counts)
{
    constexpr quint32 requests = 100;
    QVector<quint32> numbers;
    CorvidServer server;
    server.addServer("Reception", hiddenServer);
    LinkProxy link(hiddenServer, faults);
    QUdpSocket device;
    if (!server.listen() || !link.listen(linkAddress) || !device.bind())
        return numbers;
    QObject::connect(&server, &CorvidServer::requestReceived, &device, [&](const QByteArray &bytes) {
        numbers.append(qFromLittleEndian<quint32>(bytes.constData()));
    });
    for (quint32 number = 0; number < requests; ++number)
        device.writeDatagram(discovery(number), linkAddress, corvidServerPort);
    const bool isDone = QTest::qWaitFor([&] {
        *counts = link.requests();
        return counts->passed + counts->dropped == int(requests)
            && numbers.size() == counts->passed + counts->duplicated;
    });
    return isDone ? numbers : QVector<quint32>();
}

} // namespace

// The peers that firmware comes from, and the bad link to them.
class FirmwarePeersTest : public QObject
{
    Q_OBJECT

private slots:
    void webServer_data()
    {
        const TestTable<Mode, QString, int, int> table("mode", "path", "status", "bytes");
        const QString image = "nurse:a:b@/sub%20folder/a.img";
        table.row("whole", Mode::Normal, image, 200, 3000000);
        table.row("slow", Mode::Slow, image, 200, 3000000);
        table.row("truncated", Mode::Truncated, image, 200, 1500000);
        table.row("stalled", Mode::Stalled, image, 200, 1500000);
        table.row("challenge", Mode::Challenge, image, 401, 0);
        table.row("error", Mode::Error, image, 500, 0);
        table.row("redirect", Mode::Redirect, image, 302, 0);
        table.row("wrong password", Mode::Normal, "nurse:b@/sub%20folder/a.img", 401, 0);
        table.row("missing", Mode::Normal, "nurse:a:b@/b.img", 404, 0);
        table.row("outside", Mode::Normal, "nurse:a:b@/%2e%2e/outside.img", 404, 0);
    }

    void webServer()
    {
        QFETCH(Mode, mode);
        QFETCH(QString, path);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath("served/sub folder"));
        QFile image(folder.filePath("served/sub folder/a.img"));
        QFile outside(folder.filePath("outside.img"));
        QVERIFY(image.open(QIODevice::WriteOnly) && image.resize(3000000)
                && outside.open(QIODevice::WriteOnly));

        FirmwareServer server(folder.filePath("served"));
        server.setUser("nurse", "a:b");
        server.setMode(mode);
        server.setPace(1000000, 1);
        server.setRedirect(QUrl("http://127.0.0.1/"));
        QVERIFY2(server.start(QHostAddress(QHostAddress::LocalHost), 0), qPrintable(server.fault()));

        // A client with no will of its own: one request, one reply.
        QTcpSocket client;
        client.connectToHost(QHostAddress(QHostAddress::LocalHost), server.serverPort());
        client.write("GET " + path.section('@', 1).toLatin1() + " HTTP/1.1\r\nAuthorization: Basic "
                     + path.section('@', 0, 0).toLatin1().toBase64() + "\r\n\r\n");
        QByteArray reply;
        QFETCH(int, status);
        QFETCH(int, bytes);
        const auto bodySize = [&] {
            reply += client.readAll();
            const int end = reply.indexOf("\r\n\r\n");
            return end < 0 ? -1 : reply.size() - end - 4;
        };
        QTRY_COMPARE(bodySize(), bytes);
        QVERIFY2(reply.startsWith("HTTP/1.1 " + QByteArray::number(status)), reply.left(200).constData());
        QVERIFY(status != 200 || reply.contains("Content-Length: 3000000\r\n"));
        if (mode == Mode::Truncated)
            QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
    }

    void sameSeedSameFate()
    {
        LinkProxy::Counts counts;
        QCOMPARE(heard({}, &counts).size(), 100);

        LinkFaults faults;
        faults.dropped = 20;
        faults.duplicated = 10;
        faults.seed = 7;
        const QVector<quint32> first = heard(faults, &counts);
        const QSet<quint32> arrived(first.begin(), first.end());
        QVERIFY(arrived.size() < 95 && arrived.size() > 60 && arrived.size() < first.size());
        QCOMPARE(heard(faults, &counts), first);
        faults.seed = 8;
        QVERIFY(heard(faults, &counts) != first);

        LinkFaults reordering;
        reordering.heldBack = 20;
        const QVector<quint32> late = heard(reordering, &counts);
        QCOMPARE(late.size(), 100);
        QVERIFY(!std::is_sorted(late.begin(), late.end()));
    }
};

QTEST_GUILESS_MAIN(FirmwarePeersTest)
#include "firmwarepeerstest.moc"
