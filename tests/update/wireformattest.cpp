// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/wireformat.h"

#include "lab-peers/corvidwire.h"

#include <QTest>

namespace {

constexpr int headerSize = 20;
constexpr int entrySize = 68;

QByteArray twoServers()
{
    return serverListReply({{QStringLiteral("Reception"), QHostAddress(QStringLiteral("10.77.0.21"))},
                            {QString(32, QChar(0x17b)), QHostAddress(QStringLiteral("200.1.2.3"))}});
}

} // namespace

/// The bytes that the device and Corvid servers exchange, against an encoder that shares no code with ours.
class WireFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void asksForServers();
    void readsNamesAndAddresses();
    void believesNoCount_data();
    void believesNoCount();
    void passesOverOtherDatagrams_data();
    void passesOverOtherDatagrams();
};

void WireFormatTest::asksForServers()
{
    const QByteArray head("\0\0\0\0\xff\xff\0\0\x03\0\0\0", 12);
    QCOMPARE(WireFormat::discoveryRequest(), head + QByteArray(128, '\0'));
}

void WireFormatTest::readsNamesAndAddresses()
{
    QByteArray datagram = twoServers();
    // What stands behind the end of a name is not part of it.
    datagram[headerSize + 2 * 10] = 'x';
    const auto list = WireFormat::decodeServerList(datagram + "behind");
    QVERIFY(list);
    QCOMPARE(list->names, QStringList({QStringLiteral("Reception"), QString(32, QChar(0x17b))}));
    QCOMPARE(list->addresses,
             QList<QHostAddress>(
                 {QHostAddress(QStringLiteral("10.77.0.21")), QHostAddress(QStringLiteral("200.1.2.3"))}));
}

void WireFormatTest::believesNoCount_data()
{
    QTest::addColumn<QByteArray>("count");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("entries");
    const int whole = headerSize + 2 * entrySize;
    QTest::newRow("fewer") << QByteArray("\1\0\0\0", 4) << whole << 1;
    QTest::newRow("none") << QByteArray(4, '\0') << whole << 0;
    QTest::newRow("more") << QByteArray("\3\0\0\0", 4) << whole << 2;
    QTest::newRow("negative") << QByteArray(4, '\xff') << whole << 2;
    QTest::newRow("overflow") << QByteArray("\xc4\xc3\xc3\x03", 4) << whole << 2; // times 68 is 16
    QTest::newRow("cut in an entry") << QByteArray("\2\0\0\0", 4) << whole - 1 << 1;
    QTest::newRow("no entry") << QByteArray("\2\0\0\0", 4) << headerSize << 0;
    QTest::newRow("cut in the count") << QByteArray("\5\0\0\0", 4) << headerSize - 1 << 0;
}

void WireFormatTest::believesNoCount()
{
    QFETCH(const QByteArray, count);
    QFETCH(const int, size);
    QFETCH(const int, entries);
    const auto list = WireFormat::decodeServerList(twoServers().replace(16, 4, count).left(size));
    QVERIFY(list);
    QCOMPARE(list->names.size(), entries);
    QCOMPARE(list->addresses.size(), entries);
}

void WireFormatTest::passesOverOtherDatagrams_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut header") << twoServers().left(15);
    QTest::newRow("a command's magic") << twoServers().replace(12, 1, QByteArray(1, '\0'));
    QTest::newRow("magic in network order") << twoServers().replace(12, 4, QByteArray("\xaa\x55\0\3", 4));
}

void WireFormatTest::passesOverOtherDatagrams()
{
    QFETCH(const QByteArray, datagram);
    QVERIFY(!WireFormat::decodeServerList(datagram));
}

QTEST_APPLESS_MAIN(WireFormatTest)
#include "wireformattest.moc"
