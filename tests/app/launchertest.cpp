// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcherfixture.h"

#include "config/keys.h"
#include "dialoganswer.h"
#include "widgets/connectiondialog.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

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
        result += QString("10.0.0.%1").arg(number);
    return result;
}

} // namespace

/// From what the user chose to the client that is started, and from the client's end to what the user sees.
class LauncherTest : public QObject
{
    Q_OBJECT

private slots:
    void connectsToWhatIsChosen_data()
    {
        const TestTable<QString, QString, QString, bool> table("way", "address", "shown", "autoDisconnect");
        table.row("group", "group", "10.0.0.1", "name of 10.0.0.1", true);
        table.row("server of a group", "member", "10.0.0.2", "name of 10.0.0.2", false);
        table.row("server found", "found", "10.0.0.9", "<b>nine</b>", false);
        table.row("address", "manual", "host.example", "host.example", false);
        table.row("RDP", "rdp", "rdp.example", "rdp.example", false);
    }

    void connectsToWhatIsChosen()
    {
        QFETCH(QString, way);
        Launcher launcher({{{groups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2"})},
                           {{Key::connection, Key::rdpConnection, Key::rdpServerAddress}, "rdp.example"}});
        launcher.window->setServerList({{"<b>nine</b>", QHostAddress("10.0.0.9")}});
        if (way == "group")
            choose(launcher, "groupServerTreeView", 0);
        else if (way == "member")
            choose(launcher, "groupServerTreeView", 0, 1);
        else if (way == "manual")
            chooseManually(launcher, "  host.example ");
        else if (way == "rdp")
            launcher.click("rdpClientButton");
        launcher.tellClient({success});
        QVERIFY(launcher.connectAndWait());
        QCOMPARE(launcher.runs(), 1);
        QCOMPARE(QString::fromUtf8(launcher.device.read("/lab/client-calls")).trimmed(),
                 QString("-x %1 in %2")
                     .arg(launcher.device.path("/tmp/connect.json"), launcher.device.path("/opt/Tessaro")));
        QTEST(launcher.addresses().value(0), "address");
        QTEST(launcher.session(1, "misc").value("auto_disconnect").toBool(), "autoDisconnect");
        const auto *shown = Launcher::connectingBox()->findChild<QLabel *>("addressLabel");
        QTEST(shown->text(), "shown");
        QCOMPARE(launcher.history().size(), way == "rdp" ? 0 : 1);
    }

    void judgesHowSessionsEnd_data()
    {
        const TestTable<QStringList, QString, QStringList, QJsonArray> table("outcomes", "tried", "titles",
                                                                             "history");
        const QStringList error{"Connection Error"};
        const QStringList quiet;
        const QString marked = R"({"status": 6, "log": [":<FAIL>"]})";
        table.row("first lets in", {success}, "1", quiet, numbered(1, 1));
        table.row("third lets in", {explained, failure, success}, "1 2 3", quiet, numbered(3, 3));
        table.row("none lets in", {explained, failure, failure}, "1 2 3", error, {});
        table.row("the last explains", {failure, failure, explained}, "1 2 3", quiet, {});
        table.row("success with the marker", {marked}, "1", quiet, numbered(1, 1));
        table.row("no status", {"none"}, "1", quiet, numbered(1, 1));
        table.row("a crash", {"crash"}, "1", quiet, numbered(1, 1));
        table.row("no sense", {"[[", "6", R"({"status": "6"})"}, "1 2 3", error, {});
        table.row("a flood", {"flood"}, "1", quiet, numbered(1, 1));
    }

    void judgesHowSessionsEnd()
    {
        QFETCH(QStringList, outcomes);
        Launcher launcher({{{groups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2", "10.0.0.3"})}});
        // Left by an earlier session, and deleted before the first is started.
        launcher.device.write("/tmp/connect.json.status", failure.toUtf8());
        choose(launcher, "groupServerTreeView", 0);
        launcher.tellClient(outcomes);
        const DialogAnswer answer(true);
        QVERIFY(launcher.connectAndWait());
        QTEST(launcher.addresses().join(' ').remove("10.0.0."), "tried");
        for (int run = 1; run <= launcher.runs(); ++run)
            QVERIFY(launcher.session(run, "misc").value("auto_disconnect").toBool());
        QTEST(answer.titles, "titles");
        QTEST(launcher.history(), "history");
        QCOMPARE(launcher.ended->count(), 1);
        QVERIFY(launcher.window->isVisible());
        QVERIFY(!Launcher::connectingBox()->isVisible());
        QVERIFY(!launcher.device.exists("/tmp/connect.json"));
        QVERIFY(launcher.program->updateModule().ifUpdateIdle());
        QVERIFY(launcher.window->cursor().shape() != Qt::WaitCursor);
    }

    void aClientMayBeMissing()
    {
        Launcher launcher({{{groups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2"})}});
        choose(launcher, "groupServerTreeView", 0);
        launcher.device.removeTool("/opt/Tessaro/zClient");
        const DialogAnswer answer(true);
        for (int press = 1; press <= 2; ++press) {
            QVERIFY(launcher.connectAndWait());
            QCOMPARE(answer.messages.size(), press);
            QCOMPARE(answer.messages.last(), "The program that shows the desktop could not be started.");
            QVERIFY(launcher.window->isVisible());
        }
        QCOMPARE(launcher.history(), QJsonArray());
    }

    void groupsMayChangeDuringASession()
    {
        Launcher launcher({{{groups}, oneGroup("Office", {"10.0.0.1", "10.0.0.2"})}});
        choose(launcher, "groupServerTreeView", 0);
        launcher.tellClient({failure, success});
        const auto *shown = Launcher::connectingBox()->findChild<QLabel *>("addressLabel");
        launcher.click("connectButton");
        QCOMPARE(shown->text(), "name of 10.0.0.1");
        const QJsonArray others = oneGroup("Elsewhere", {});
        launcher.device.store({groups}, others);
        launcher.window->refreshServerGroups();
        QVERIFY(launcher.ended->wait(TestGroup::waitMs()));
        QCOMPARE(launcher.addresses(), QStringList({"10.0.0.1", "10.0.0.2"}));
        QCOMPARE(shown->text(), "name of 10.0.0.2");
        QVERIFY(!launcher.part<QPushButton>("connectButton")->isEnabled());
        QCOMPARE(launcher.device.stored({groups}).toArray(), others);
    }

    void endsTheClientWithItself()
    {
        Launcher launcher;
        launcher.device.setTool(
            "/opt/Tessaro/zClient",
            "trap 'echo >\"$2.end\"; exit' TERM; echo >\"$2.begin\"; while :; do sleep 0.02; done");
        chooseManually(launcher, "10.0.0.1");
        launcher.click("connectButton");
        QTRY_VERIFY(launcher.device.exists("/tmp/connect.json.begin"));
        launcher.ended.reset();
        launcher.program.reset();
        QVERIFY(launcher.device.exists("/tmp/connect.json.end"));
    }

    void keepsAHistory_data()
    {
        const TestTable<QJsonArray, QJsonArray> table("before", "after");
        QJsonArray nine = numbered(2, 10);
        nine.prepend("10.0.0.1");
        table.row("eleventh", numbered(2, 11), nine);
        table.row("known", {"a", "10.0.0.1"}, {"a", "10.0.0.1"});
        table.row("known among too many", numbered(0, 11), numbered(0, 10));
    }

    void keepsAHistory()
    {
        QFETCH(QJsonArray, before);
        QFETCH(QJsonArray, after);
        Launcher launcher({{{Key::mainWindow, Key::manualServerHistory}, before}});
        chooseManually(launcher, "10.0.0.1");
        launcher.tellClient({success});
        QVERIFY(launcher.connectAndWait());
        QCOMPARE(launcher.history(), after);
        const auto *box = launcher.part<QComboBox>("manualServerComboBox");
        QJsonArray offered;
        for (int row = 0; row < box->count(); ++row)
            offered += box->itemText(row);
        QCOMPARE(offered, after);
        QCOMPARE(launcher.device.stored({Key::mainWindow, Key::selection}).toString(), "manual address");
    }
};

QTEST_MAIN(LauncherTest)
#include "launchertest.moc"
