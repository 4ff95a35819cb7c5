// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "pages/desktopmodedialog.h"
#include "testdevice.h"

#include <QtTest>

class DesktopModeTest : public QObject
{
    Q_OBJECT

private slots:
    void switchesWhenAllowed_data();
    void switchesWhenAllowed();
};

void DesktopModeTest::switchesWhenAllowed_data()
{
    QTest::addColumn<bool>("isProtected");
    QTest::addColumn<QString>("hash");
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<bool>("switched");

    const QString hash = "7b934a60ddc07b8f5b1134c03430bba6"; // of "grün"
    const QString input = QString::fromUtf8("grün");
    const QString password = "Administrator password";
    const QStringList refused{password, "Authentication error"};
    QTest::newRow("open") << false << hash << true << "" << QStringList{"Desktop mode"} << true;
    QTest::newRow("declined") << false << "" << false << "" << QStringList{"Desktop mode"} << false;
    QTest::newRow("right") << true << hash << true << input << QStringList{password, "Desktop mode"} << true;
    QTest::newRow("wrong") << true << hash << true << "x" << refused << false;
    QTest::newRow("cancelled") << true << hash << false << input << QStringList{password} << false;
    QTest::newRow("other case") << true << hash.toUpper() << true << input << refused << false;
    QTest::newRow("no hash") << true << "" << true << "" << refused << false;
}

void DesktopModeTest::switchesWhenAllowed()
{
    QFETCH(bool, isProtected);
    QFETCH(QString, hash);
    QFETCH(bool, accept);
    QFETCH(QString, input);
    QFETCH(QStringList, titles);
    QFETCH(bool, switched);
    const TestDevice device;
    const QJsonObject root{
        {"general settings",
         QJsonObject{{"setup GUI password enabled", isProtected}, {"setup GUI password hash", hash}}}};

    const DialogAnswer answer(accept, input);
    QCOMPARE(DesktopModeDialog::ask(nullptr, root), switched);
    QCOMPARE(answer.titles, titles);
    QCOMPARE(device.calls(), switched ? QStringList{"kt-switch -d"} : QStringList());
}

QTEST_MAIN(DesktopModeTest)
#include "desktopmodetest.moc"
