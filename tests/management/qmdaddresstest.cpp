// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/qmdaddress.h"
#include "testtable.h"

#include <QtTest>

class QmdAddressTest : public QObject
{
    Q_OBJECT

private slots:
    void completesAnAddress_data()
    {
        const TestTable<QString, bool> table("url", "usable");
        table.row("10.1.1.5", "http://10.1.1.5:8080", true);
        table.row("https://host:1/path", "https://host:1/path", true);
        table.row("h:", "http://h:8080", true);
        table.row("fe80::1", "http://[fe80::1]:8080", true);
        table.row("https://fe80::1/", "https://[fe80::1]:8080/", true);
        table.row("[fe80::1]:90", "http://[fe80::1]:90", true);
        table.row("", "Unknown", false);
        table.row("a b", "http://a b:8080", false);
        table.row("ftp://host", "ftp://host:8080", false);
        table.row("host:99999", "http://host:99999", false);
    }

    void completesAnAddress()
    {
        QFETCH(bool, usable);
        const QString address = QTest::currentDataTag();
        QTEST(QmdAddress::complete(address), "url");
        QCOMPARE(QmdAddress::isUsable(address), usable);
    }
};

QTEST_GUILESS_MAIN(QmdAddressTest)
#include "qmdaddresstest.moc"
