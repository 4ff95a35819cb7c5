// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "app/autoconnectpage.h"
#include "broker/solvaaccessmanager.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "lab-peers/brokerserver.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTreeView>

namespace {

const QString user = QStringLiteral("nurse");
const QString password = QStringLiteral("s %41:@ü");
const QString solvaClient = QStringLiteral("/usr/bin/solva-client");
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
        addUser(user + QStringLiteral("@ward"), password,
                {{QStringLiteral("Ward 3"), QString()}, {QString::fromUtf8("Büro 桌"), QString()}});
        if (!start(QHostAddress::LocalHost, 0))
            qFatal("no broker: %s", qPrintable(fault()));
    }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(serverPort()); }
};

/// A launcher at its page for brokers, and the broker that is stored.
struct Ward : Broker, Launcher
{
    explicit Ward(const QList<Setting> &settings = {})
        : Launcher(QList<Setting>{{solva + QStringList{Key::brokerAddress}, address()},
                                  {{Key::keyboard, Key::layout}, QStringLiteral("de")}}
                   + settings)
    {
        device.setTool(solvaClient, client);
        part<AutoConnectPage>("autoLogonPage")->countdown().setTick(1);
        window->openLauncher(QStringLiteral("solva"));
    }
    void type(const QString &given = password) const
    {
        part<QLineEdit>("solvaUserLineEdit")->setText(user);
        part<QLineEdit>("solvaPasswordLineEdit")->setText(given);
        part<QLineEdit>("solvaDomainLineEdit")->setText(QStringLiteral("ward"));
    }
    bool signIn() const
    {
        type();
        click("loginSolvaButton");
        return QTest::qWaitFor([this] { return page() == SettingsApp::DesktopsPage; });
    }
    int page() const { return part<QStackedWidget>("mainStackedWidget")->currentIndex(); }
    bool waits() const { return window->cursor().shape() == Qt::WaitCursor; }
    QTreeView *list() const { return part<QTreeView>("desktopsView"); }
    QString calls() const { return QString::fromUtf8(device.read(QStringLiteral("/lab/solva-calls"))); }
    QString call(const QString &desktop, const QString &added = QString()) const
    {
        return QStringLiteral("-c|--server=127.0.0.1|--protocol=ZMP|--desktop=%1|--username=nurse@ward|"
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
            {{Key::autologon, Key::domain}, QStringLiteral("ward")},
            {solva + QStringList{Key::defaultProtocol}, QStringLiteral("ZMP")}};
}

} // namespace

/// From the log-on at a broker to one of its desktops.
class BrokerTest : public QObject
{
    Q_OBJECT

private slots:
    void saysWhyALogonFails_data();
    void saysWhyALogonFails();
    void opensTheDesktopChosen_data();
    void opensTheDesktopChosen();
    void logsOnByItself_data();
    void logsOnByItself();
    void givesALogonUp_data();
    void givesALogonUp();
    void doesOneThingAtATime();
    void aClientMayBeMissing();
    void showsManyDesktops();
    void keepsAHistory();
    void takesTheAddressThatIsStoredNow();
};

void BrokerTest::saysWhyALogonFails_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("password") << "solvaPasswordLineEdit"
                              << "x"
                              << "SOLVA Connection Broker error: Invalid user credentials.";
    QTest::newRow("nobody there") << "brokerAddressLineEdit"
                                  << "127.0.0.1:1"
                                  << "SOLVA Connection Broker error: Connection refused";
    QTest::newRow("no broker") << "brokerAddressLineEdit"
                               << " "
                               << "The address of the broker is missing.";
    QTest::newRow("no user") << "solvaUserLineEdit"
                             << " "
                             << "The user name is missing.";
}

void BrokerTest::saysWhyALogonFails()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    Ward ward;
    const DialogAnswer answer(true);
    ward.type();
    ward.window->findChild<QLineEdit *>(field)->setText(text);
    ward.click("loginSolvaButton");
    QTRY_COMPARE(answer.titles, QStringList{QStringLiteral("Connection Error")});
    QTEST(answer.messages.first(), "message");
    QVERIFY(text == QStringLiteral("x") || ward.requests().isEmpty());
    QCOMPARE(ward.page(), int(SettingsApp::LauncherPage));
    QVERIFY(!ward.waits());
    ward.window->findChild<QLineEdit *>(field)->setText(ward.address());
    QVERIFY(ward.signIn());
}

void BrokerTest::opensTheDesktopChosen_data()
{
    QTest::addColumn<bool>("application");
    QTest::addColumn<bool>("twoDisplays");
    QTest::addColumn<QString>("added");
    QTest::newRow("desktop alone") << false << false << QString();
    QTest::newRow("application") << true << false << "--application=calc|--application-dir=C:\\|";
    QTest::newRow("two displays") << false << true << "--use-smsc-sda|--sda-position=left|";
}

void BrokerTest::opensTheDesktopChosen()
{
    QFETCH(bool, application);
    QFETCH(bool, twoDisplays);
    QFETCH(QString, added);
    Ward ward({{{Key::appAutostart},
                QJsonObject{{Key::enabled, application},
                            {Key::program, QStringLiteral("calc")},
                            {Key::path, QStringLiteral("C:\\")}}},
               {{Key::display, Key::secondary, Key::position}, QStringLiteral("left")}});
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
    QVERIFY(ward.ended->wait());
    QVERIFY(ward.window->isVisible() && !ward.waits());
    QCOMPARE(ward.page(), int(SettingsApp::DesktopsPage));
    QCOMPARE(ward.list()->currentIndex().row(), 1);

    ward.click("logoutSolvaButton");
    QCOMPARE(ward.page(), int(SettingsApp::LauncherPage));
    QCOMPARE(ward.list()->model()->rowCount(), 0);
    QVERIFY(ward.part<QWidget>("loginSolvaButton")->isVisible());
    ward.click("connectSolvaButton");
    QVERIFY(!ward.window->sessionLauncher().isRunning());
}

void BrokerTest::logsOnByItself_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("desktop");
    QTest::newRow("to a desktop") << password << "Ward 3";
    QTest::newRow("to the list") << password << QString();
    QTest::newRow("wrong password") << "x"
                                    << "Ward 3";
    QTest::newRow("cancelled") << "cancel"
                               << "Ward 3";
}

void BrokerTest::logsOnByItself()
{
    QFETCH(QString, given);
    QFETCH(QString, desktop);
    Ward ward(autoLogon(given, desktop));
    const DialogAnswer answer(true);
    QCOMPARE(ward.page(), int(SettingsApp::AutoLogonPage));
    auto *page = ward.part<AutoConnectPage>("autoLogonPage");
    connect(&page->countdown(), &Countdown::remaining, this, [&](int seconds) {
        if (seconds == 0 && given == QStringLiteral("cancel"))
            ward.click("autoLogonCancelButton");
    });
    QTRY_VERIFY(!page->countdown().isRunning());
    if (given == password) {
        QTRY_COMPARE(ward.page(), int(SettingsApp::DesktopsPage));
        ward.letGo();
        QTRY_COMPARE(ward.ended->count(), desktop.isEmpty() ? 0 : 1);
        QCOMPARE(ward.calls(), desktop.isEmpty() ? QString() : ward.call(desktop));
        QCOMPARE(ward.page(), int(SettingsApp::DesktopsPage));
        return;
    }
    QTRY_COMPARE(answer.titles.size(), given == QStringLiteral("x") ? 1 : 0);
    QTRY_VERIFY(!ward.waits());
    QCOMPARE(ward.page(), int(SettingsApp::AutoLogonPage));
    QVERIFY(ward.part<QWidget>("autoLogonAgainButton")->isVisible());
    QVERIFY(ward.part<QWidget>("autoLogonButton")->isHidden());
    QVERIFY(ward.requests().isEmpty() == answer.titles.isEmpty());
    QCOMPARE(ward.calls(), QString());
}

void BrokerTest::givesALogonUp_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("page");
    QTest::newRow("for the settings") << QByteArray("settingsButton") << int(SettingsApp::SettingsPage);
    QTest::newRow("for another mode") << QByteArray("rdpClientButton") << int(SettingsApp::LauncherPage);
    QTest::newRow("signing out") << QByteArray("logoutSolvaButton") << int(SettingsApp::LauncherPage);
}

void BrokerTest::givesALogonUp()
{
    QFETCH(QByteArray, button);
    Ward ward;
    connect(ward.window.get(), &SettingsApp::settingsRequested, ward.window.get(),
            &SettingsApp::showSettings);
    const DialogAnswer answer(true);
    ward.setMode(BrokerServer::Mode::Slow);
    ward.setDelay(100);
    QSignalSpy asked(&ward, &BrokerServer::requestReceived);
    ward.type();
    ward.click("loginSolvaButton");
    QVERIFY(ward.waits() && asked.wait());
    ward.click(button);
    QVERIFY(!ward.waits());
    // Whoever asks now is answered after the log-on would have been.
    SolvaAccessManager later;
    QSignalSpy replies(&later, &SolvaAccessManager::sendReply);
    later.getSolvaServers(ward.address(), user, password, QStringLiteral("ward"));
    QVERIFY(replies.wait());
    QTEST(ward.page(), "page");
    QCOMPARE(answer.titles, QStringList());
    QCOMPARE(ward.list()->model()->rowCount(), 0);
    ward.window->showLauncher();
    ward.click("solvaVDIButton");
    QVERIFY(ward.signIn());
}

void BrokerTest::doesOneThingAtATime()
{
    Ward ward(autoLogon(password, QStringLiteral("Ward 3")));
    ward.setMode(BrokerServer::Mode::Slow);
    ward.setDelay(50);
    QSignalSpy asked(&ward, &BrokerServer::requestReceived);
    QVERIFY(asked.wait() && ward.waits());
    ward.click("autoLogonAgainButton");
    ward.click("loginSolvaButton");
    QTRY_VERIFY(!ward.calls().isEmpty());
    const int requests = ward.requests().size(); // a challenge and its answer
    QVERIFY(requests <= 2);
    for (const char *button : {"loginSolvaButton", "autoLogonAgainButton", "connectSolvaButton"})
        ward.click(button);
    ward.letGo();
    QVERIFY(ward.ended->wait());
    QCOMPARE(ward.calls(), ward.call(QStringLiteral("Ward 3")));
    QCOMPARE(ward.requests().size(), requests);
}

void BrokerTest::aClientMayBeMissing()
{
    Ward ward;
    ward.device.removeTool(solvaClient);
    const DialogAnswer answer(true);
    QVERIFY(ward.signIn());
    ward.click("connectSolvaButton");
    QVERIFY(ward.ended->wait());
    QCOMPARE(answer.messages,
             QStringList{QStringLiteral("The program that shows the desktop could not be started.")});
    QVERIFY(ward.window->isVisible() && !ward.waits());
    QCOMPARE(ward.page(), int(SettingsApp::DesktopsPage));
}

void BrokerTest::showsManyDesktops()
{
    Ward ward;
    ward.setMode(BrokerServer::Mode::Huge);
    QElapsedTimer time;
    time.start();
    QVERIFY(ward.signIn());
    QVERIFY2(time.elapsed() < 4000, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(ward.list()->model()->rowCount(), BrokerServer::hugeList);
}

void BrokerTest::keepsAHistory()
{
    QJsonArray known;
    for (int number = 0; number < 10; ++number)
        known += QStringLiteral("10.0.0.%1").arg(number);
    Ward ward({{solva + QStringList{Key::allowCustomBrokers}, true},
               {{Key::mainWindow, Key::solvaBrokerHistory}, known}});
    ward.part<QComboBox>("brokerAddressComboBox")->setEditText(ward.address());
    for (int logon = 0; logon < 2; ++logon) {
        QVERIFY(ward.signIn());
        ward.click("logoutSolvaButton");
    }
    known.removeLast();
    known.prepend(ward.address());
    QCOMPARE(ward.device.document().value(Key::mainWindow).toObject().value(Key::solvaBrokerHistory),
             QJsonValue(known));
    QCOMPARE(ward.part<QComboBox>("brokerAddressComboBox")->count(), 10);
    QCOMPARE(ward.part<QComboBox>("brokerAddressComboBox")->currentText(), ward.address());
}

void BrokerTest::takesTheAddressThatIsStoredNow()
{
    Ward ward({{solva + QStringList{Key::allowCustomBrokers}, true}});
    auto *box = ward.part<QComboBox>("brokerAddressComboBox");
    const auto store = [&ward](const QString &address) {
        QJsonObject document = ward.device.document();
        QJsonObject connection = document.value(Key::connection).toObject();
        QJsonObject broker = connection.value(Key::solvaConnection).toObject();
        broker.insert(Key::brokerAddress, address);
        connection.insert(Key::solvaConnection, broker);
        document.insert(Key::connection, connection);
        ward.device.setDocument(document);
        ward.configuration.readContent();
        ward.window->loadConfiguration();
    };
    store(QStringLiteral("new"));
    QCOMPARE(box->currentText(), QStringLiteral("new"));
    box->setEditText(QStringLiteral("typed"));
    store(QStringLiteral("newer"));
    QCOMPARE(box->currentText(), QStringLiteral("typed"));
}

QTEST_MAIN(BrokerTest)
#include "brokertest.moc"
