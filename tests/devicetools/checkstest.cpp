// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/checks.h"
#include "devicetools/sharedfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class ChecksTest : public QObject
{
    Q_OBJECT

private slots:
    void acceptsOnlyWhatIsWellFormed_data();
    void acceptsOnlyWhatIsWellFormed();
    void convertsMasksBothWays();
    void replacesALinkAndNotWhatItNames();
};

void ChecksTest::acceptsOnlyWhatIsWellFormed_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("expected");

    QTest::newRow("host address") << Checks::isHostAddress("10.77.0.10") << true;
    for (const char *text :
         {"", "10.77.0", "10.77.0.10.1", "10.77.0.256", " 10.77.0.1", "+1.2.3.4", "0x0a.1.1.1", "0.0.0.0",
          "127.0.0.1", "224.0.0.1", "255.255.255.255", "10.77.0.1\n"})
        QTest::addRow("host address '%s'", text) << Checks::isHostAddress(text) << false;

    const QString longLabel(63, 'a');
    QTest::newRow("name") << Checks::isHostName("qmd.example.org") << true;
    QTest::newRow("address as a name") << Checks::isHostName("10.0.0.1") << true;
    QTest::newRow("longest label") << Checks::isHostName(longLabel + ".org") << true;
    QTest::newRow("longer label") << Checks::isHostName(longLabel + "a.org") << false;
    QTest::newRow("longer name") << Checks::isHostName(QString("ab.").repeated(84) + "ab") << false;
    for (const char *text : {"", ".", "a..b", "-a", "a-", "a b", "a\n", "a;b", "ü"})
        QTest::addRow("name '%s'", text) << Checks::isHostName(QString::fromUtf8(text)) << false;

    QTest::newRow("SSID of 32 bytes") << Checks::isSsid(QString(16, QChar(0xfc))) << true;
    QTest::newRow("SSID of 33 bytes") << Checks::isSsid(QString(16, QChar(0xfc)) + "a") << false;
    QTest::newRow("no SSID") << Checks::isSsid("") << false;
    QTest::newRow("shortest pass phrase") << Checks::isWpaKey("8 chars!") << true;
    QTest::newRow("too short") << Checks::isWpaKey("7 chars") << false;
    QTest::newRow("longest pass phrase") << Checks::isWpaKey(QString(63, 'x')) << true;
    QTest::newRow("64 that are no hexadecimal digits") << Checks::isWpaKey(QString(64, 'x')) << false;
    QTest::newRow("64 hexadecimal digits") << Checks::isWpaKey(QString(64, 'F')) << true;
    QTest::newRow("pass phrase with a line end") << Checks::isWpaKey("password\n") << false;
}

void ChecksTest::acceptsOnlyWhatIsWellFormed()
{
    QFETCH(bool, accepted);
    QTEST(accepted, "expected");
}

void ChecksTest::convertsMasksBothWays()
{
    for (int length = 1; length <= 32; ++length)
        QCOMPARE(Checks::prefixOfMask(Checks::maskOfPrefix(length)).value_or(0), length);
    QCOMPARE(Checks::maskOfPrefix(20), QString("255.255.240.0"));
    QVERIFY(!Checks::prefixOfMask("255.0.255.0"));
    QVERIFY(!Checks::prefixOfMask("0.0.0.0"));
}

void ChecksTest::replacesALinkAndNotWhatItNames()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath("target");
    const QString name = folder.filePath("name");
    QVERIFY(SharedFile::replace(target, "kept"));
    QVERIFY(QFile::link(target, name));

    QVERIFY(SharedFile::replace(name, "new"));

    QFile kept(target);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("kept"));
    QVERIFY(!QFileInfo(name).isSymLink());
    QCOMPARE(QFileInfo(name).permissions() & 0xfff, QFile::Permissions(0x6644) & 0xfff);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
    QVERIFY(SharedFile::remove(name));
    QVERIFY(SharedFile::remove(name)); // there is none any more
}

QTEST_GUILESS_MAIN(ChecksTest)
#include "checkstest.moc"
