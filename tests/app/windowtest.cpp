// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "launcher/stylesheets.h"
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
        const TestTable<QString, bool, QString, QStringList> table("action", "accept", "question", "calls");
        const QString off = "Device shutdown: Shutdown device?";
        const QString again = "Device reboot: Reboot device?";
        table.row("shutdown", "actionShutdown", true, off, {"kt-lulling -s"});
        table.row("no shutdown", "actionShutdown", false, off, {});
        table.row("reboot", "actionReboot", true, again, {"kt-lulling -r"});
        table.row("no reboot", "actionReboot", false, again, {});
        table.row("sleep", "actionSleep", false, "", {"kt-lulling -S"});
    }

    void asksBeforeItTurnsTheDeviceOff()
    {
        QFETCH(QString, action);
        QFETCH(bool, accept);
        QFETCH(QStringList, calls);
        const Launcher launcher;
        const DialogAnswer answer(accept);
        launcher.window->findChild<QAction *>(action)->trigger();
        const QString asked = answer.titles.value(0) + QString(": ") + answer.messages.value(0);
        QTEST(answer.titles.isEmpty() ? QString() : asked, "question");
        QTRY_COMPARE(launcher.device.calls(), calls);
    }

    void resetsWithoutAsking()
    {
        const Launcher launcher;
        int busy = 1;
        launcher.window->checkResetPossible(&busy);
        QCOMPARE(busy, 0);
        launcher.window->checkResetPossible(nullptr);
        launcher.window->resetDevice();
        QTRY_COMPARE(launcher.device.calls(), QStringList{"kt-lulling -r"});
    }

    void opensInTheModeOfTheDocument_data()
    {
        const TestTable<bool, int, int> table("autoconnect", "mode", "page");
        table.row("corvid", false, 0, 0);
        table.row("corvid ", true, 0, 2); // a word that nobody knows is the factory's
        table.row("solva", true, 1, 0);
        table.row("rdp", true, 2, 0);
    }

    void opensInTheModeOfTheDocument()
    {
        QFETCH(bool, autoconnect);
        const Launcher launcher(
            {{{Key::connection, Key::corvidConnection, Key::autoconnect, Key::enabled}, autoconnect}});
        launcher.window->openLauncher(QLatin1String(QTest::currentDataTag()));
        QTEST(launcher.part<QStackedWidget>("connectionStackedWidget")->currentIndex(), "mode");
        QTEST(launcher.page(), "page");
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

    void drawsTheNetworkState()
    {
        const Launcher launcher;
        const auto drawn = [&launcher](const char *label) {
            const QString sheet = launcher.part<QLabel>(label)->styleSheet();
            QStringList images;
            auto image = QRegularExpression("(ethernet|wifi|40)_[a-z0-9_]+(?=\\.png)").globalMatch(sheet);
            while (image.hasNext())
                images += image.next().captured();
            return images.join(' ');
        };
        TopBar &bar = launcher.window->topBar();
        const QPair<const char *, const char *> wired[] = {{"no link", "ethernet_with_red"},
                                                           {"link", "ethernet_with_yellow"},
                                                           {"connected", "ethernet_with_green"}};
        for (const auto &[state, image] : wired) {
            bar.setWiredNetworkStatus(state);
            QCOMPARE(drawn("wiredStatusLabel"), image);
        }
        const QPair<int, const char *> strengths[] = {{0, "wifi_0"},  {1, "wifi_1"},  {33, "wifi_1"},
                                                      {34, "wifi_2"}, {66, "wifi_2"}, {67, "wifi_full"}};
        for (const auto &[strength, image] : strengths) {
            bar.setWirelessNetworkStatus("connected", strength);
            QCOMPARE(drawn("wirelessStatusLabel"), QString("%1 40_vexa_icon_ok").arg(image));
        }
        bar.setWirelessNetworkStatus("link", 0);
        QCOMPARE(drawn("wirelessStatusLabel"), "wifi_0 40_vexa_icon_yellow");
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
