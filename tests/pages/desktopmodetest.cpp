// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "pages/desktopmodedialog.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

class DesktopModeTest : public QObject
{
    Q_OBJECT

private slots:
    void switchesWhenAllowed_data()
    {
        const TestTable<bool, QString, bool, QString, QStringList, bool> table(
            "isProtected", "hash", "accept", "input", "titles", "switched");

        const QString hash = "7b934a60ddc07b8f5b1134c03430bba6"; // of "grün"
        const QString input = QString::fromUtf8("grün");
        const QString password = "Administrator password";
        const QStringList refused{password, "Authentication error"};
        table.row("open", false, hash, true, "", {"Desktop mode"}, true);
        table.row("declined", false, "", false, "", {"Desktop mode"}, false);
        table.row("right", true, hash, true, input, {password, "Desktop mode"}, true);
        table.row("wrong", true, hash, true, "x", refused, false);
        table.row("cancelled", true, hash, false, input, {password}, false);
        table.row("other case", true, hash.toUpper(), true, input, refused, false);
        table.row("no hash", true, "", true, "", refused, false);
    }

    void switchesWhenAllowed()
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
};

QTEST_MAIN(DesktopModeTest)
#include "desktopmodetest.moc"
