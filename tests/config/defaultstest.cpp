// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/keys.h"

#include <QtTest>

/// The factory document.
class DefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeDocument()
    {
        QFile file(QFINDTESTDATA("data/defaults.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject expected = QJsonDocument::fromJson(file.readAll()).object();
        QCOMPARE(expected.size(), 17);
        const QJsonObject document = Defaults::document("ward-3", Defaults::networkSettings({}));
        // By section, so that a failure names the one.
        QCOMPARE(document.keys(), expected.keys());
        for (const QString &section : document.keys())
            QVERIFY2(document.value(section) == expected.value(section), qPrintable(section));
    }

    void wiredInterface()
    {
        NetworkProperty property("10.0.0.5", "255.255.255.0", "10.0.0.1", QString(), QString(), false);
        property.setTypeIp("static");
        const QJsonObject wired = Defaults::wiredInterface(true, property);
        QCOMPARE(wired.value("Ip address"), "10.0.0.5");
        // The mask and the gateway stand crosswise.
        QCOMPARE(wired.value("default gateway"), "255.255.255.0");
        QCOMPARE(wired.value("network mask"), "10.0.0.1");
        QVERIFY(!Defaults::wiredInterface(false, property).value("enabled").toBool());
    }
};

QTEST_APPLESS_MAIN(DefaultsTest)
#include "defaultstest.moc"
