// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "launcher/autoconnectpage.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QStringList autoconnect{Key::connection, Key::corvidConnection, Key::autoconnect};

QList<Launcher::Setting> toServer(const QString &name)
{
    return {{autoconnect + QStringList{Key::enabled}, true},
            {autoconnect + QStringList{Key::type}, "server"},
            {autoconnect + QStringList{Key::server},
             QJsonObject{{Key::serverName, name}, {Key::serverAddress, "10.0.0.1"}}}};
}

} // namespace

/// A device that connects by itself.
class AutoConnectTest : public QObject
{
    Q_OBJECT

private slots:
    void countsSixTicksAndConnects()
    {
        Launcher launcher(toServer("<i>Main</i>"));
        launcher.tellClient({"hold"});
        QStringList shown;
        connect(&countdown(launcher), &Countdown::remaining, this,
                [&] { shown += text(launcher, "autoConnectCountdownLabel"); });
        open(launcher);
        QCOMPARE(text(launcher, "autoConnectInfoLabel"),
                 "This device is configured for automatic connection to server:  <i>Main</i> ");
        QCOMPARE(launcher.part<QLabel>("autoConnectInfoLabel")->textFormat(), Qt::PlainText);
        QTRY_VERIFY(launcher.window->session().isRunning());
        QCOMPARE(shown.size(), 6);
        for (int tick = 0; tick < 6; ++tick)
            QCOMPARE(shown.at(tick), QString("Automatic connection in %1 seconds").arg(5 - tick));
        QCOMPARE(text(launcher, "autoConnectCountdownLabel"), "Autoconnect started...");
        QVERIFY(launcher.part<QWidget>("autoConnectCancelButton")->isHidden());
        QVERIFY(!countdown(launcher).isRunning());
        QTRY_COMPARE(launcher.addresses(), QStringList{"10.0.0.1"});
        launcher.letGo();
        QTRY_COMPARE(launcher.ended->count(), 1);
    }

    void connectsAtOnceAndOnce()
    {
        Launcher launcher(toServer("Main"));
        launcher.tellClient({success, success});
        open(launcher, 60000);
        QVERIFY(QTest::qWaitForWindowActive(launcher.window));
        QCOMPARE(launcher.window->focusWidget()->objectName(), "autoConnectButton");
        QTest::keyClick(launcher.window->focusWidget(), Qt::Key_Return);
        launcher.click("autoConnectButton");
        QVERIFY(launcher.window->session().isRunning());
        QVERIFY(launcher.ended->wait(TestGroup::waitMs()));
        QVERIFY(!launcher.window->session().isRunning());
        QCOMPARE(launcher.runs(), 1);
    }

    void stopsWhenToldTo_data()
    {
        const TestTable<QByteArray, int> table("button", "page");
        table.row("cancel", "autoConnectCancelButton", 2);
        table.row("another mode", "rdpClientButton", 0);
        table.row("its own mode", "CorvidProButton", 0);
    }

    void stopsWhenToldTo()
    {
        QFETCH(QByteArray, button);
        Launcher launcher(toServer("Main"));
        const QSignalSpy elapsed(&countdown(launcher), &Countdown::elapsed);
        connect(&countdown(launcher), &Countdown::remaining, this, [&](int seconds) {
            if (seconds == 0)
                launcher.click(button);
        });
        open(launcher);
        QTRY_VERIFY(!countdown(launcher).isRunning());
        QCOMPARE(elapsed.count(), 0);
        QVERIFY(!launcher.window->session().isRunning());
        QTEST(launcher.page(), "page");
        const bool cancelled = button == "autoConnectCancelButton";
        QCOMPARE(launcher.part<QWidget>("autoConnectButton")->isHidden(), cancelled);
        QCOMPARE(launcher.part<QWidget>("autoConnectAgainButton")->isHidden(), !cancelled);

        launcher.tellClient({success});
        launcher.click("CorvidProButton");
        QVERIFY(launcher.connectAndWait()); // the configured target, whatever the launcher shows
        QCOMPARE(launcher.addresses(), QStringList{"10.0.0.1"});
    }

    void beginsAgainAfterASession()
    {
        Launcher launcher(toServer("Main"));
        launcher.tellClient({success, failure, success});
        const DialogAnswer answer(true);
        open(launcher);
        QTRY_COMPARE(launcher.runs(), 3);
        QTRY_VERIFY(launcher.ended->count() >= 3);
        launcher.part<AutoConnectPage>("autoConnectPage")->stop();
        QCOMPARE(answer.titles, QStringList{"Connection Error"});
        QCOMPARE(launcher.page(), 2);
        for (const QWidget *widget : QApplication::topLevelWidgets())
            QCOMPARE(widget->isVisible(), widget == launcher.window);
    }

    void countsAgainWhenTheLauncherReturns_data()
    {
        const TestTable<QString, bool, bool> table("way", "cancelled", "counts");
        for (const char *way : {"settings", "no password", "wrong password", "merge"}) {
            table.row(way, way, false, true);
            table.row(QByteArray(way) + ", cancelled", way, true, false);
        }
        table.row("session in another mode", "session", false, true);
        table.row("session with a merge", "merge in a session", false, true);
        table.row("session with a merge, cancelled before", "merge in a session", true, true);
    }

    void countsAgainWhenTheLauncherReturns()
    {
        QFETCH(QString, way);
        QFETCH(bool, cancelled);
        const bool password = way.contains("password");
        Launcher launcher(toServer("Main")
                          + QList<Launcher::Setting>{{{Key::general, Key::setupPasswordEnabled}, password}});
        launcher.tellClient({"hold"});
        open(launcher, 60000);
        if (cancelled)
            launcher.click("autoConnectCancelButton");
        const DialogAnswer answer(way == "wrong password", "guess");
        const auto merge = [&launcher] {
            int result = 0;
            launcher.program->remoteConfiguration().mergeRemoteConfig(
                {{Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 15}}},
                 {Key::general, QJsonObject{{Key::deviceName, "Ward 3"}}}},
                &result);
            QCOMPARE(result, 0);
        };
        if (way == "settings" || password)
            launcher.click("settingsButton");
        if (way == "settings") {
            QVERIFY(!countdown(launcher).isRunning());
            launcher.click("backButton");
        } else if (way == "merge") {
            merge();
        } else if (way.contains("session")) {
            launcher.click("rdpClientButton");
            launcher.program->session().connectTo(ConnectTarget::server("other", "10.0.0.2"));
            QTRY_COMPARE(launcher.runs(), 1);
            if (way.contains("merge"))
                merge();
            QVERIFY(!countdown(launcher).isRunning());
            launcher.letGo();
            QTRY_COMPARE(launcher.ended->count(), 1);
        }
        QTEST(countdown(launcher).isRunning(), "counts");
        QCOMPARE(launcher.window->clientMode(), SettingsApp::ClientMode::Corvid);
    }

    void isNotTouchedByAMergeWithoutDifferences()
    {
        const Launcher launcher(toServer("Main"));
        open(launcher, 60000);
        const QSignalSpy begun(&countdown(launcher), &Countdown::remaining);
        int result = 1;
        launcher.program->remoteConfiguration().mergeRemoteConfig(
            {{Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 15}}}}, &result);
        QCOMPARE(result, 0);
        QVERIFY(countdown(launcher).isRunning());
        QCOMPARE(begun.size(), 0);
    }

    void walksItsGroupAsItIsNow()
    {
        Launcher launcher({{autoconnect + QStringList{Key::enabled}, true},
                           {autoconnect + QStringList{Key::group}, "Office"},
                           {{Key::serverGroups}, oneGroup("Office", {})}});
        launcher.tellClient({failure, success});
        open(launcher, 60000);
        launcher.device.store({Key::serverGroups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2"}));
        launcher.window->refreshServerGroups();
        launcher.click("autoConnectButton");
        QVERIFY(launcher.ended->wait(TestGroup::waitMs()));
        QCOMPARE(launcher.addresses(), QStringList({"10.0.0.1", "10.0.0.2"}));
    }

    void saysWhatIsMissing()
    {
        QList<Launcher::Setting> settings = toServer("Main");
        settings.last().value = QJsonObject{{Key::serverName, "Main"}, {Key::serverAddress, ""}};
        Launcher launcher(settings);
        const DialogAnswer answer(true);
        open(launcher);
        QTRY_COMPARE(answer.messages, QStringList{"Server Main has no address. Connection aborted!"});
        QCOMPARE(launcher.page(), 0);
        QVERIFY(!launcher.window->session().isRunning());
    }

    void declinesTheQuestionThatStandsOpen()
    {
        Launcher launcher(toServer("Main"));
        launcher.tellClient({success});
        QTimer::singleShot(0, this, [&] { open(launcher); });
        launcher.window->on_actionShutdown_triggered(); // returns when the session starts
        QVERIFY(launcher.window->session().isRunning());
        QCOMPARE(launcher.device.calls(), QStringList());
        QVERIFY(launcher.ended->wait(TestGroup::waitMs()));
        launcher.part<AutoConnectPage>("autoConnectPage")->stop();
    }

    void doesNotOvertakeTheSettings()
    {
        Launcher launcher(toServer("Main"));
        open(launcher, 60000);
        bool counted = true;
        connect(launcher.window, &SettingsApp::settingsRequested, this,
                [&] { counted = countdown(launcher).isRunning(); }); // where the password is asked for
        launcher.click("settingsButton");
        QVERIFY(!counted);
        launcher.window->showLauncher();
        countdown(launcher).start();
        launcher.window->showSettings(); // by whatever way
        QVERIFY(!countdown(launcher).isRunning());
        launcher.window->showLauncher();
        QVERIFY(launcher.window->focusWidget()->objectName() != "autoConnectAgainButton");
    }

private:
    static Countdown &countdown(const Launcher &launcher)
    {
        return launcher.part<AutoConnectPage>("autoConnectPage")->countdown();
    }
    /// Opens the page with ticks of a millisecond.
    static void open(const Launcher &launcher, int tickMs = 1)
    {
        countdown(launcher).setTick(tickMs);
        launcher.window->openLauncher("corvid");
    }
    static QString text(const Launcher &launcher, const char *label)
    {
        return launcher.part<QLabel>(label)->text();
    }
};

QTEST_MAIN(AutoConnectTest)
#include "autoconnecttest.moc"
