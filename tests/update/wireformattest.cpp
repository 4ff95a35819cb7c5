// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/wireformat.h"

#include "lab-peers/corvidwire.h"
#include "testtable.h"

#include <QTest>
#include <QtEndian>

namespace {

constexpr int headerSize = 20;
constexpr int entrySize = 68;

QByteArray twoServers()
{
    return serverListReply(
        {{"Reception", QHostAddress("10.77.0.21")}, {QString(32, QChar(0x17b)), QHostAddress("200.1.2.3")}});
}

QByteArray block(quint32 position, quint32 total)
{
    QByteArray datagram(1036, 'd');
    qToLittleEndian(position, datagram.data());
    qToLittleEndian(total, datagram.data() + 4);
    return datagram;
}

} // namespace

/// The bytes that the device and Corvid servers exchange, against an encoder that shares no code with ours.
class WireFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void asksForServers()
    {
        const QByteArray head("\0\0\0\0\xff\xff\0\0\x03\0\0\0", 12);
        QCOMPARE(WireFormat::discoveryRequest(), head + QByteArray(128, '\0'));
    }

    void readsNamesAndAddresses()
    {
        QByteArray datagram = twoServers();
        // What stands behind the end of a name is not part of it.
        datagram[headerSize + 2 * 10] = 'x';
        const auto list = WireFormat::decodeServerList(datagram + "behind");
        QVERIFY(list);
        QCOMPARE(list->names, QStringList({"Reception", QString(32, QChar(0x17b))}));
        QCOMPARE(list->addresses,
                 QList<QHostAddress>({QHostAddress("10.77.0.21"), QHostAddress("200.1.2.3")}));
    }

    void readsABlockOfAFile()
    {
        const auto last = WireFormat::decodeFileBlock(block(1024, 1030));
        QVERIFY(last && last->position == 1024 && last->total == 1030 && last->data == "dddddd");
        const auto beyond = WireFormat::decodeFileBlock(block(2048, 1030));
        QVERIFY(beyond && beyond->data.isEmpty());
        QVERIFY(!WireFormat::decodeFileBlock(block(0, 0)));
        QVERIFY(!WireFormat::decodeFileBlock(block(0, 1030).chopped(1)));
        QVERIFY(!WireFormat::decodeFileBlock(block(0, 1030).replace(12, 4, QByteArray("\3\0\x55\xaa", 4))));
    }

    void believesNoCount_data()
    {
        const TestTable<QByteArray, int, int> table("count", "size", "entries");
        const int whole = headerSize + 2 * entrySize;
        table.row("fewer", QByteArray("\1\0\0\0", 4), whole, 1);
        table.row("more", QByteArray("\3\0\0\0", 4), whole, 2);
        table.row("overflow", QByteArray("\xc4\xc3\xc3\x03", 4), whole, 2); // times 68 is 16
        table.row("cut in an entry", QByteArray("\2\0\0\0", 4), whole - 1, 1);
        table.row("no entry", QByteArray("\2\0\0\0", 4), headerSize, 0);
        table.row("cut in the count", QByteArray("\5\0\0\0", 4), headerSize - 1, 0);
    }

    void believesNoCount()
    {
        QFETCH(const QByteArray, count);
        QFETCH(const int, size);
        QFETCH(const int, entries);
        const auto list = WireFormat::decodeServerList(twoServers().replace(16, 4, count).left(size));
        QVERIFY(list);
        QCOMPARE(list->names.size(), entries);
        QCOMPARE(list->addresses.size(), entries);
    }

    void passesOverOtherDatagrams_data()
    {
        const TestTable<QByteArray> table("datagram");
        table.row("cut header", twoServers().left(15));
        table.row("a command's magic", twoServers().replace(12, 1, QByteArray(1, '\0')));
        table.row("magic in network order", twoServers().replace(12, 4, QByteArray("\xaa\x55\0\3", 4)));
    }

    void passesOverOtherDatagrams()
    {
        QFETCH(const QByteArray, datagram);
        QVERIFY(!WireFormat::decodeServerList(datagram));
    }
};

QTEST_APPLESS_MAIN(WireFormatTest)
#include "wireformattest.moc"
