// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "launcher/topbar.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

/// What surrounds the launcher's pages: the modes, the power menu, the network's icons, the window itself.
class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesToClose()
    {
        const Launcher launcher;
        QVERIFY(!launcher.window->close());
        QVERIFY(launcher.window->isVisible());
    }

    void asksBeforeItTurnsTheDeviceOff_data()
    {
        const TestTable<QString, bool, QStringList> table("action", "accept", "calls");
        table.row("shutdown", "actionShutdown", true, {"kt-lulling -s"});
        table.row("no shutdown", "actionShutdown", false, {});
        table.row("reboot", "actionReboot", true, {"kt-lulling -r"});
        table.row("sleep", "actionSleep", false, {"kt-lulling -S"});
    }

    void asksBeforeItTurnsTheDeviceOff()
    {
        QFETCH(QString, action);
        QFETCH(bool, accept);
        QFETCH(QStringList, calls);
        const Launcher launcher;
        const DialogAnswer answer(accept);
        launcher.window->findChild<QAction *>(action)->trigger();
        QCOMPARE(answer.titles.size(), action == "actionSleep" ? 0 : 1);
        QTRY_COMPARE(launcher.device.calls(), calls);
    }

    void offersWhatTheAdministratorAllows()
    {
        const QString address = "rdp.example";
        const Launcher launcher({{{Key::connection, Key::corvidConnection, Key::allowManualAddress}, false},
                                 {{Key::connection, Key::corvidConnection, Key::showAutodetected}, false},
                                 {{Key::connection, Key::rdpConnection, Key::rdpServerAddress}, address},
                                 {{Key::mainWindow, Key::selection}, "manual address"}});
        const QSignalSpy searches(launcher.window, &SettingsApp::refreshServerList);
        launcher.window->openLauncher("corvid");
        launcher.window->setServerList({{"found", QHostAddress("10.0.0.9")}});
        QCOMPARE(searches.count(), 0);
        QVERIFY(!launcher.part<QWidget>("detectedPanel")->isVisible());
        QVERIFY(!launcher.part<QWidget>("manuallyDesktopButton")->isVisible());
        QVERIFY(!launcher.part<QWidget>("manualServerComboBox")->isVisible());
        QVERIFY(!launcher.part<QPushButton>("connectButton")->isEnabled());
        launcher.click("rdpClientButton");
        QVERIFY(launcher.part<QLineEdit>("rdpAddressLineEdit")->isReadOnly());
        QCOMPARE(launcher.part<QLineEdit>("rdpAddressLineEdit")->text(), address);
        QVERIFY(launcher.part<QPushButton>("connectButton")->isEnabled());
    }

    void showsNamesAsTheyAreAndInTheirPlace()
    {
        const QString markup = "<b>bold</b>";
        const Launcher launcher({{{Key::general, Key::deviceName}, markup}});
        const auto *device = launcher.part<QLabel>("deviceNameLabel");
        QCOMPARE(device->text(), markup);
        QCOMPARE(device->textFormat(), Qt::PlainText);
        for (const char *ip : {"10.0.0.1", ""}) {
            launcher.window->topBar().setWirelessToolTip(QLatin1String(ip) + "\n<img src=x>\n50%");
            const QString tip = launcher.part<QLabel>("wirelessStatusLabel")->toolTip();
            QVERIFY2(!Qt::mightBeRichText(tip) || tip.contains("&lt;img"), qPrintable(tip));
        }

        const Launcher longNamed({{{Key::general, Key::deviceName}, QString(10000, 'W')}});
        const auto *card = longNamed.part<QWidget>("launcherCard");
        const auto *connectButton = longNamed.part<QWidget>("connectButton");
        QVERIFY(card->rect().contains(QRect(connectButton->mapTo(card, QPoint()), connectButton->size())));
        QVERIFY(connectButton->width() >= 176);
    }
};

QTEST_MAIN(WindowTest)
#include "windowtest.moc"
