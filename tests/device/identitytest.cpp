// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/identity.h"
#include "testdevice.h"
#include "testtable.h"

#include <QFile>
#include <QTest>

/// The number by which a management server tells machines apart.
class IdentityTest : public QObject
{
    Q_OBJECT

private slots:
    void derivesANumberFromWhatDistinguishes_data()
    {
        const TestTable<QStringList, bool> table("texts", "distinguished");
        table.row("nothing", {}, false);
        table.row("what its maker left", {"To Be Filled By O.E.M.\n", " Default  string", "none"}, false);
        table.row("zeros", {"00000000", "00000000-0000-0000-0000-000000000000", "...."}, false);
        table.row("too short", {"A1", "0"}, false);
        table.row("one that counts", {"Default string", "PF2ABC12", "none"}, true);
        table.row("an identifier", {"none", "none", "4c4c4544-0042-3510-8052-b4c04f4e3032"}, true);
    }

    void derivesANumberFromWhatDistinguishes()
    {
        QFETCH(QStringList, texts);
        QFETCH(bool, distinguished);
        const QString serial = Identity::derivedSerialNumber(texts);
        QCOMPARE(QRegularExpression("^[1-9a-f][0-9a-f]{4,15}$").match(serial).hasMatch(), distinguished);
        QCOMPARE(serial.isEmpty(), !distinguished);
        if (!distinguished)
            return;
        QCOMPARE(Identity::derivedSerialNumber(texts.replaceInStrings("\n", "")), serial);
        QVERIFY(Identity::derivedSerialNumber(texts + QStringList("another board")) != serial);
    }

    void readsWhatTheServiceManagerHandsOver()
    {
        const QTemporaryDir credentials;
        qputenv("CREDENTIALS_DIRECTORY", QFile::encodeName(credentials.path()));
        const QString ofSystem = Identity::serialNumber();
        QFile file(credentials.filePath("board-serial"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("PF2ABC12\n") > 0);
        file.close();
        const QString ofBoard = Identity::serialNumber();
        QCOMPARE(ofBoard, Identity::serialNumber());
        QVERIFY(ofBoard != ofSystem);
        // The lab's device has none of this machine.
        const TestDevice device;
        QCOMPARE(Identity::serialNumber(), QString());
        qunsetenv("CREDENTIALS_DIRECTORY");
    }
};

QTEST_GUILESS_MAIN(IdentityTest)
#include "identitytest.moc"
