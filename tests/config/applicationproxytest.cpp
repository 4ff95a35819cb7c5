// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/applicationproxy.h"
#include "testtable.h"

#include <QtTest>

/// Which hosts are local, and so may be reached without the proxy.
class ApplicationProxyTest : public QObject
{
    Q_OBJECT

private slots:
    void knowsLocalHosts_data()
    {
        const TestTable<bool> table("local");
        for (const char *host : {"10.77.0.1", "10.77.3.255", "fd00:1::9", "127.0.0.1", "::1", "169.254.8.9",
                                 "fe80::1", "server", "Printer.LOCAL", "localhost"})
            table.row(host, true);
        for (const char *host :
             {"10.77.4.0", "fd00:2::9", "203.0.113.1", "server.example", "local.example", ""})
            table.row(host, false);
    }

    void knowsLocalHosts()
    {
        const auto entry = [](const char *address, int prefixLength) {
            QNetworkAddressEntry result;
            result.setIp(QHostAddress(QString(address)));
            result.setPrefixLength(prefixLength);
            return result;
        };
        QTEST(ApplicationProxy::isLocal(QString(QTest::currentDataTag()),
                                        {entry("10.77.0.10", 22), entry("fd00:1::2", 64)}),
              "local");
    }
};

QTEST_GUILESS_MAIN(ApplicationProxyTest)
#include "applicationproxytest.moc"
