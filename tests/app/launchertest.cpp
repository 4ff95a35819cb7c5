// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "config/keys.h"
#include "dialoganswer.h"
#include "widgets/connectiondialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace {

const QString groups = Key::serverGroups;

void choose(const Launcher &launcher, const char *view, int row, int child = -1)
{
    auto *tree = launcher.part<QTreeView>(view);
    const QModelIndex top = tree->model()->index(row, 0);
    tree->setCurrentIndex(child < 0 ? top : tree->model()->index(child, 0, top));
}

void chooseManually(const Launcher &launcher, const QString &address)
{
    launcher.click("manuallyDesktopButton");
    launcher.part<QComboBox>("manualServerComboBox")->setEditText(address);
}

QJsonArray numbered(int first, int last)
{
    QJsonArray result;
    for (int number = first; number <= last; ++number)
        result += QStringLiteral("10.0.0.%1").arg(number);
    return result;
}

} // namespace

/// From what the user chose to the client that is started, and from the client's end to what the user sees.
class LauncherTest : public QObject
{
    Q_OBJECT

private slots:
    void connectsToWhatIsChosen_data();
    void connectsToWhatIsChosen();
    void judgesHowSessionsEnd_data();
    void judgesHowSessionsEnd();
    void aClientMayBeMissing();
    void refusesAnEmptyGroup();
    void makesWayForASession();
    void groupsMayChangeDuringASession();
    void endsTheClientWithItself();
    void keepsAHistory_data();
    void keepsAHistory();
    void enterConnects_data();
    void enterConnects();
};

void LauncherTest::connectsToWhatIsChosen_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("autoDisconnect");
    QTest::newRow("group") << "group"
                           << "10.0.0.1"
                           << "name of 10.0.0.1" << true;
    QTest::newRow("server of a group") << "member"
                                       << "10.0.0.2"
                                       << "name of 10.0.0.2" << false;
    QTest::newRow("server found") << "found"
                                  << "10.0.0.9"
                                  << "<b>nine</b>" << false;
    QTest::newRow("address") << "manual"
                             << "host.example"
                             << "host.example" << false;
    QTest::newRow("RDP") << "rdp"
                         << "rdp.example"
                         << "rdp.example" << false;
}

void LauncherTest::connectsToWhatIsChosen()
{
    QFETCH(QString, way);
    Launcher launcher(
        {{{groups},
          oneGroup(QStringLiteral("Office"), {QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")})},
         {{Key::connection, Key::rdpConnection, Key::rdpServerAddress}, QStringLiteral("rdp.example")}});
    launcher.window->setServerList(
        {{QStringLiteral("<b>nine</b>"), QHostAddress(QStringLiteral("10.0.0.9"))}});
    if (way == QLatin1String("group"))
        choose(launcher, "groupServerTreeView", 0);
    else if (way == QLatin1String("member"))
        choose(launcher, "groupServerTreeView", 0, 1);
    else if (way == QLatin1String("manual"))
        chooseManually(launcher, QStringLiteral("  host.example "));
    else if (way == QLatin1String("rdp"))
        launcher.click("rdpClientButton");
    launcher.tellClient({success});
    QVERIFY(launcher.connectAndWait());
    QCOMPARE(launcher.runs(), 1);
    QCOMPARE(QString::fromUtf8(launcher.device.read(QStringLiteral("/lab/client-calls"))).trimmed(),
             QStringLiteral("-x %1 in %2")
                 .arg(launcher.device.path(QStringLiteral("/tmp/connect.json")),
                      launcher.device.path(QStringLiteral("/opt/Tessaro"))));
    QTEST(launcher.addresses().value(0), "address");
    QTEST(launcher.session(1, QStringLiteral("misc")).value(QLatin1String("auto_disconnect")).toBool(),
          "autoDisconnect");
    const auto *shown = Launcher::connectingBox()->findChild<QLabel *>(QStringLiteral("addressLabel"));
    QTEST(shown->text(), "shown");
    QCOMPARE(launcher.history().size(), way == QLatin1String("rdp") ? 0 : 1);
}

void LauncherTest::judgesHowSessionsEnd_data()
{
    QTest::addColumn<QStringList>("outcomes");
    QTest::addColumn<QString>("tried");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QJsonArray>("history");
    const QStringList error{QStringLiteral("Connection Error")};
    const QStringList quiet;
    const QString marked = QStringLiteral(R"({"status": 6, "log": [":<FAIL>"]})");
    QTest::newRow("first lets in") << QStringList{success} << "1" << quiet << numbered(1, 1);
    QTest::newRow("second lets in") << QStringList{failure, success} << "1 2" << quiet << numbered(2, 2);
    QTest::newRow("third lets in") << QStringList{explained, failure, success} << "1 2 3" << quiet
                                   << numbered(3, 3);
    QTest::newRow("none lets in") << QStringList{explained, failure, failure} << "1 2 3" << error
                                  << QJsonArray();
    QTest::newRow("the last explains")
        << QStringList{failure, failure, explained} << "1 2 3" << quiet << QJsonArray();
    QTest::newRow("success with the marker") << QStringList{marked} << "1" << quiet << numbered(1, 1);
    QTest::newRow("no status") << QStringList{QStringLiteral("none")} << "1" << quiet << numbered(1, 1);
    QTest::newRow("a crash") << QStringList{QStringLiteral("crash")} << "1" << quiet << numbered(1, 1);
    QTest::newRow("no sense") << QStringList{QStringLiteral("[["), QStringLiteral("6"),
                                             QStringLiteral(R"({"status": "6"})")}
                              << "1 2 3" << error << QJsonArray();
    QTest::newRow("a flood") << QStringList{QStringLiteral("flood")} << "1" << quiet << numbered(1, 1);
}

void LauncherTest::judgesHowSessionsEnd()
{
    QFETCH(QStringList, outcomes);
    Launcher launcher(
        {{{groups},
          oneGroup(QStringLiteral("Office"),
                   {QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2"), QStringLiteral("10.0.0.3")})}});
    // Left by an earlier session, and deleted before the first is started.
    launcher.device.write(QStringLiteral("/tmp/connect.json.status"), failure.toUtf8());
    choose(launcher, "groupServerTreeView", 0);
    launcher.tellClient(outcomes);
    const DialogAnswer answer(true);
    QVERIFY(launcher.connectAndWait());
    QTEST(launcher.addresses().join(QLatin1Char(' ')).remove(QStringLiteral("10.0.0.")), "tried");
    for (int run = 1; run <= launcher.runs(); ++run)
        QVERIFY(
            launcher.session(run, QStringLiteral("misc")).value(QLatin1String("auto_disconnect")).toBool());
    QTEST(answer.titles, "titles");
    QTEST(launcher.history(), "history");
    QCOMPARE(launcher.ended->count(), 1);
    QVERIFY(launcher.window->isVisible());
    QVERIFY(!Launcher::connectingBox()->isVisible());
    QVERIFY(!launcher.device.exists(QStringLiteral("/tmp/connect.json")));
    QVERIFY(launcher.window->updateModule().ifUpdateIdle());
    QVERIFY(launcher.window->cursor().shape() != Qt::WaitCursor);
}

void LauncherTest::aClientMayBeMissing()
{
    Launcher launcher(
        {{{groups},
          oneGroup(QStringLiteral("Office"), {QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")})}});
    choose(launcher, "groupServerTreeView", 0);
    launcher.device.removeTool(QStringLiteral("/opt/Tessaro/zClient"));
    const DialogAnswer answer(true);
    for (int press = 1; press <= 2; ++press) {
        QVERIFY(launcher.connectAndWait());
        QCOMPARE(answer.titles.size(), press);
        QVERIFY(launcher.window->isVisible());
    }
    QCOMPARE(answer.messages.first(),
             QStringLiteral("The IP address or domain name you entered is not valid or does not have Corvid "
                            "Pro installed. Please try again."));
    QCOMPARE(launcher.history(), QJsonArray());
}

void LauncherTest::refusesAnEmptyGroup()
{
    Launcher launcher({{{groups}, oneGroup(QStringLiteral("%1<i>"), {})}});
    choose(launcher, "groupServerTreeView", 0);
    const DialogAnswer answer(true);
    launcher.click("connectButton");
    QCOMPARE(answer.titles, QStringList{QStringLiteral("Empty group")});
    QCOMPARE(answer.messages, QStringList{QStringLiteral("Group %1<i> is empty. Connection aborted!")});
    QVERIFY(!launcher.window->sessionLauncher().isRunning());
    QVERIFY(launcher.window->isVisible());
}

void LauncherTest::makesWayForASession()
{
    Launcher launcher;
    chooseManually(launcher, QStringLiteral("10.0.0.1"));
    launcher.tellClient({QStringLiteral("hold")});
    launcher.click("connectButton");
    QTRY_COMPARE(launcher.runs(), 1);
    QVERIFY(!launcher.window->isVisible());
    QVERIFY(Launcher::connectingBox()->isVisible());
    QVERIFY(launcher.window->updateModule().ifSessionConnected());
    int busy = 1;
    launcher.window->checkResetPossible(&busy);
    QCOMPARE(busy, 0);
    launcher.window->sessionLauncher().closeConnectionDialog();
    QVERIFY(!Launcher::connectingBox()->isVisible());

    launcher.click("connectButton");
    launcher.letGo();
    QTRY_COMPARE(launcher.ended->count(), 1);
    QCOMPARE(launcher.runs(), 1);
    QVERIFY(launcher.window->isVisible());
}

void LauncherTest::groupsMayChangeDuringASession()
{
    Launcher launcher(
        {{{groups},
          oneGroup(QStringLiteral("Office"), {QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")})}});
    choose(launcher, "groupServerTreeView", 0);
    launcher.tellClient({failure, success});
    launcher.click("connectButton");
    QJsonObject document = launcher.device.document();
    document.insert(groups, oneGroup(QStringLiteral("Elsewhere"), {}));
    launcher.device.setDocument(document);
    launcher.window->refreshServerGroups();
    QVERIFY(launcher.ended->wait());
    QCOMPARE(launcher.addresses(), QStringList({QStringLiteral("10.0.0.1"), QStringLiteral("10.0.0.2")}));
    QVERIFY(!launcher.part<QPushButton>("connectButton")->isEnabled());
    QCOMPARE(launcher.device.document().value(groups), document.value(groups));
}

void LauncherTest::endsTheClientWithItself()
{
    Launcher launcher;
    launcher.device.setTool(
        QStringLiteral("/opt/Tessaro/zClient"),
        "trap 'echo >\"$2.end\"; exit' TERM; echo >\"$2.begin\"; while :; do sleep 0.02; done");
    chooseManually(launcher, QStringLiteral("10.0.0.1"));
    launcher.click("connectButton");
    QTRY_VERIFY(launcher.device.exists(QStringLiteral("/tmp/connect.json.begin")));
    launcher.ended.reset();
    launcher.window.reset();
    QVERIFY(launcher.device.exists(QStringLiteral("/tmp/connect.json.end")));
}

void LauncherTest::keepsAHistory_data()
{
    QTest::addColumn<QJsonArray>("before");
    QTest::addColumn<QJsonArray>("after");
    QJsonArray nine = numbered(2, 10);
    nine.prepend(QStringLiteral("10.0.0.1"));
    QTest::newRow("first") << QJsonArray() << numbered(1, 1);
    QTest::newRow("eleventh") << numbered(2, 11) << nine;
    QTest::newRow("known") << QJsonArray{QStringLiteral("a"), QStringLiteral("10.0.0.1")}
                           << QJsonArray{QStringLiteral("a"), QStringLiteral("10.0.0.1")};
    QTest::newRow("known among too many") << numbered(0, 11) << numbered(0, 10);
}

void LauncherTest::keepsAHistory()
{
    QFETCH(QJsonArray, before);
    QFETCH(QJsonArray, after);
    Launcher launcher({{{Key::mainWindow, Key::manualServerHistory}, before}});
    chooseManually(launcher, QStringLiteral("10.0.0.1"));
    launcher.tellClient({success, failure});
    QVERIFY(launcher.connectAndWait());
    QCOMPARE(launcher.history(), after);
    const auto *box = launcher.part<QComboBox>("manualServerComboBox");
    QJsonArray offered;
    for (int row = 0; row < box->count(); ++row)
        offered += box->itemText(row);
    QCOMPARE(offered, after);
    QCOMPARE(launcher.device.document().value(Key::mainWindow).toObject().value(Key::selection).toString(),
             QStringLiteral("manual address"));

    chooseManually(launcher, QStringLiteral("nowhere"));
    const DialogAnswer answer(true);
    QVERIFY(launcher.connectAndWait());
    QCOMPARE(launcher.history(), after);
}

void LauncherTest::enterConnects_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("connects");
    QTest::newRow("list") << QByteArray("groupServerTreeView") << int(Qt::Key_Return) << true;
    QTest::newRow("keypad") << QByteArray("groupServerTreeView") << int(Qt::Key_Enter) << true;
    QTest::newRow("Connect") << QByteArray("connectButton") << int(Qt::Key_Return) << true;
    QTest::newRow("another button") << QByteArray("refreshServersButton") << int(Qt::Key_Return) << false;
    QTest::newRow("above the launcher") << QByteArray("rdpClientButton") << int(Qt::Key_Return) << false;
}

void LauncherTest::enterConnects()
{
    QFETCH(QByteArray, from);
    QFETCH(int, key);
    QFETCH(bool, connects);
    Launcher launcher({{{groups}, oneGroup(QStringLiteral("Office"), {QStringLiteral("10.0.0.1")})}});
    QVERIFY(QTest::qWaitForWindowActive(launcher.window.get()));
    launcher.tellClient({success});
    launcher.part<QWidget>("groupServerTreeView")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(launcher.window->focusWidget(), Qt::Key_Down);
    // Through the other list, as Tab leads; what is chosen stays chosen.
    launcher.part<QWidget>("detectedView")->setFocus(Qt::TabFocusReason);
    launcher.part<QWidget>(from)->setFocus(Qt::TabFocusReason);
    const QSignalSpy pressed(launcher.part<QAbstractButton>("rdpClientButton"), &QAbstractButton::clicked);
    QTest::keyClick(launcher.window->focusWidget(), Qt::Key(key));
    QCOMPARE(launcher.window->sessionLauncher().isRunning(), connects);
    QCOMPARE(pressed.count(), from == "rdpClientButton" ? 1 : 0);
    if (connects)
        QVERIFY(launcher.ended->wait());
    QCOMPARE(launcher.runs(), connects ? 1 : 0);
}

QTEST_MAIN(LauncherTest)
#include "launchertest.moc"
