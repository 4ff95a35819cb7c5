// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "launcher/autoconnectpage.h"
#include "broker/solvaaccessmanager.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "lab-peers/brokerserver.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString user = "nurse";
const QString password = "s %41:@ü";
const QString solvaClient = "/usr/bin/solva-client";
const QStringList solva{Key::connection, Key::solvaConnection};

const char *const client = R"(
lab="$KT_DEVICE_ROOT/lab"
printf '%s|' "$@" >>"$lab/solva-calls"; echo >>"$lab/solva-calls"
while [ ! -e "$lab/go" ]; do sleep 0.02; done
)";

struct Broker : BrokerServer
{
    Broker()
    {
        addUser(user + "@ward", password, {{"Ward 3", QString()}, {QString::fromUtf8("Büro 桌"), QString()}});
        if (!start(QHostAddress::LocalHost, 0))
            qFatal("no broker: %s", qPrintable(fault()));
    }
    QString address() const { return QString("127.0.0.1:%1").arg(serverPort()); }
};

/// A launcher at its page for brokers, and the broker that is stored.
struct Ward : Broker, Launcher
{
    explicit Ward(const QList<Setting> &settings = {})
        : Launcher(QList<Setting>{{solva + QStringList{Key::brokerAddress}, address()},
                                  {{Key::keyboard, Key::layout}, "de"}}
                   + settings)
    {
        device.setTool(solvaClient, client);
        part<AutoConnectPage>("autoLogonPage")->countdown().setTick(1);
        window->openLauncher("solva");
    }
    void type(const QString &given = password) const
    {
        part<QLineEdit>("solvaUserLineEdit")->setText(user);
        part<QLineEdit>("solvaPasswordLineEdit")->setText(given);
        part<QLineEdit>("solvaDomainLineEdit")->setText("ward");
    }
    bool signIn() const
    {
        type();
        click("loginSolvaButton");
        return QTest::qWaitFor([this] { return page() == SettingsApp::DesktopsPage; }, TestGroup::waitMs());
    }
    bool waits() const { return window->cursor().shape() == Qt::WaitCursor; }
    QTreeView *list() const { return part<QTreeView>("desktopsView"); }
    QString calls() const { return QString::fromUtf8(device.read("/lab/solva-calls")); }
    QString call(const QString &desktop, const QString &added = QString()) const
    {
        return QString("-c|--server=127.0.0.1|--protocol=ZMP|--desktop=%1|--username=nurse@ward|"
                       "--password=%2|--experience=|--keyboard-layout=de|%3\n")
            .arg(desktop, password, added);
    }
};

QList<Launcher::Setting> autoLogon(const QString &given, const QString &desktop)
{
    return {{solva + QStringList{Key::autoconnect, Key::enabled}, true},
            {solva + QStringList{Key::autoconnect, Key::desktop}, desktop},
            {{Key::autologon, Key::username}, user},
            {{Key::autologon, Key::password}, given},
            {{Key::autologon, Key::domain}, "ward"},
            {solva + QStringList{Key::defaultProtocol}, "ZMP"}};
}

} // namespace

/// From the log-on at a broker to one of its desktops.
class BrokerTest : public QObject
{
    Q_OBJECT

private slots:
    void saysWhyALogonFails_data()
    {
        const TestTable<QString, QString, QString> table("field", "text", "message");
        table.row("password", "solvaPasswordLineEdit", "x",
                  "SOLVA Connection Broker error: Invalid user credentials.");
        table.row("nobody there", "brokerAddressLineEdit", "127.0.0.1:1",
                  "SOLVA Connection Broker error: Connection refused");
        table.row("no broker", "brokerAddressLineEdit", " ", "The address of the broker is missing.");
    }

    void saysWhyALogonFails()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        Ward ward;
        const DialogAnswer answer(true);
        ward.type();
        ward.window->findChild<QLineEdit *>(field)->setText(text);
        ward.click("loginSolvaButton");
        QTRY_COMPARE(answer.titles, QStringList{"Connection Error"});
        QTEST(answer.messages.first(), "message");
        QVERIFY(text == "x" || ward.requests().isEmpty());
        QCOMPARE(ward.page(), int(SettingsApp::LauncherPage));
        QVERIFY(!ward.waits());
        ward.window->findChild<QLineEdit *>(field)->setText(ward.address());
        QVERIFY(ward.signIn());
    }

    void opensTheDesktopChosen_data()
    {
        const TestTable<bool, bool, QString> table("application", "twoDisplays", "added");
        table.row("desktop alone", false, false, {});
        table.row("application", true, false, "--application=calc|--application-dir=C:\\|");
        table.row("two displays", false, true, "--use-smsc-sda|--sda-position=left|");
    }

    void opensTheDesktopChosen()
    {
        QFETCH(bool, application);
        QFETCH(bool, twoDisplays);
        QFETCH(QString, added);
        Ward ward({{{Key::appAutostart},
                    QJsonObject{{Key::enabled, application}, {Key::program, "calc"}, {Key::path, "C:\\"}}},
                   {{Key::display, Key::secondary, Key::position}, "left"}});
        ward.window->setDualDisplay(true);
        ward.window->setDualDisplay(twoDisplays);
        QVERIFY(ward.signIn());
        QVERIFY(!ward.waits());
        QVERIFY(ward.part<QLineEdit>("solvaPasswordLineEdit")->text().isEmpty());
        QCOMPARE(ward.list()->model()->rowCount(), 2);
        ward.list()->setCurrentIndex(ward.list()->model()->index(1, 0));
        ward.click("zmpProtocolRadioButton");
        ward.click("connectSolvaButton");
        QTRY_COMPARE(ward.calls(), ward.call(QString::fromUtf8("Büro 桌"), added));
        QVERIFY(ward.window->isHidden());
        ward.letGo();
        QVERIFY(ward.ended->wait(TestGroup::waitMs()));
        QVERIFY(ward.window->isVisible() && !ward.waits());
        QCOMPARE(ward.page(), int(SettingsApp::DesktopsPage));
        QCOMPARE(ward.list()->currentIndex().row(), 1);

        ward.click("logoutSolvaButton");
        QCOMPARE(ward.page(), int(SettingsApp::LauncherPage));
        QCOMPARE(ward.list()->model()->rowCount(), 0);
        ward.click("connectSolvaButton");
        QVERIFY(!ward.window->session().isRunning());
    }

    void logsOnByItself_data()
    {
        const TestTable<QString, QString> table("given", "desktop");
        table.row("to a desktop", password, "Ward 3");
        table.row("to the list", password, {});
        table.row("wrong password", "x", "Ward 3");
        table.row("cancelled", "cancel", "Ward 3");
    }

    void logsOnByItself()
    {
        QFETCH(QString, given);
        QFETCH(QString, desktop);
        Ward ward(autoLogon(given, desktop));
        const DialogAnswer answer(true);
        QCOMPARE(ward.page(), int(SettingsApp::AutoLogonPage));
        auto *page = ward.part<AutoConnectPage>("autoLogonPage");
        connect(&page->countdown(), &Countdown::remaining, this, [&](int seconds) {
            if (seconds == 0 && given == "cancel")
                ward.click("autoLogonCancelButton");
        });
        QTRY_VERIFY(!page->countdown().isRunning());
        if (given == password) {
            QTRY_COMPARE(ward.page(), int(SettingsApp::DesktopsPage));
            ward.letGo();
            QTRY_COMPARE(ward.ended->count(), desktop.isEmpty() ? 0 : 1);
            QCOMPARE(ward.calls(), desktop.isEmpty() ? QString() : ward.call(desktop));
            QCOMPARE(ward.page(), int(SettingsApp::DesktopsPage));
            const QStringList history{"main window", "custom solva broker history"};
            QCOMPARE(ward.device.stored(history).toArray(), QJsonArray{ward.address()});
            return;
        }
        QTRY_COMPARE(answer.titles.size(), given == "x" ? 1 : 0);
        QTRY_VERIFY(!ward.waits());
        QCOMPARE(ward.page(), int(SettingsApp::AutoLogonPage));
        QVERIFY(ward.part<QWidget>("autoLogonAgainButton")->isVisible());
        QVERIFY(ward.part<QWidget>("autoLogonButton")->isHidden());
        QVERIFY(ward.requests().isEmpty() == answer.titles.isEmpty());
        QCOMPARE(ward.calls(), QString());

        ward.click("rdpClientButton");
        ward.click("solvaVDIButton");
        QCOMPARE(ward.part<QLineEdit>("solvaUserLineEdit")->text(), user);
        ward.part<QLineEdit>("solvaPasswordLineEdit")->setText(password);
        ward.click("loginSolvaButton");
        QTRY_COMPARE(ward.page(), int(SettingsApp::DesktopsPage));
    }

    void givesALogonUp_data()
    {
        const TestTable<QByteArray, int> table("button", "page");
        table.row("for the settings", "settingsButton", SettingsApp::SettingsPage);
        table.row("signing out", "logoutSolvaButton", SettingsApp::LauncherPage);
    }

    void givesALogonUp()
    {
        QFETCH(QByteArray, button);
        Ward ward;
        connect(ward.window, &SettingsApp::settingsRequested, ward.window, &SettingsApp::showSettings);
        const DialogAnswer answer(true);
        ward.setMode(BrokerServer::Mode::Slow);
        ward.setDelay(100);
        QSignalSpy asked(&ward, &BrokerServer::requestReceived);
        ward.type();
        ward.click("loginSolvaButton");
        QVERIFY(ward.waits() && asked.wait(TestGroup::waitMs()));
        ward.click(button);
        QVERIFY(!ward.waits());
        // Whoever asks now is answered after the log-on would have been.
        SolvaAccessManager later;
        QSignalSpy replies(&later, &SolvaAccessManager::sendReply);
        later.getSolvaServers(ward.address(), user, password, "ward");
        QVERIFY(replies.wait(TestGroup::waitMs()));
        QTEST(ward.page(), "page");
        QCOMPARE(answer.titles, QStringList());
        QCOMPARE(ward.list()->model()->rowCount(), 0);
        ward.window->showLauncher();
        ward.click("solvaVDIButton");
        QVERIFY(ward.signIn());
    }

    void doesOneThingAtATime()
    {
        Ward ward(autoLogon(password, "Ward 3"));
        ward.setMode(BrokerServer::Mode::Slow);
        ward.setDelay(50);
        QSignalSpy asked(&ward, &BrokerServer::requestReceived);
        QVERIFY(asked.wait(TestGroup::waitMs()) && ward.waits());
        ward.click("autoLogonAgainButton");
        ward.click("loginSolvaButton");
        QTRY_VERIFY(!ward.calls().isEmpty());
        const int requests = ward.requests().size(); // a challenge and its answer
        QVERIFY(requests <= 2);
        for (const char *button : {"loginSolvaButton", "autoLogonAgainButton", "connectSolvaButton"})
            ward.click(button);
        ward.letGo();
        QVERIFY(ward.ended->wait(TestGroup::waitMs()));
        QCOMPARE(ward.calls(), ward.call("Ward 3"));
        QCOMPARE(ward.requests().size(), requests);
    }
};

QTEST_MAIN(BrokerTest)
#include "brokertest.moc"
