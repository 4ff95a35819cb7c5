// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "openedpage.h"
#include "pages/addserverdialog.h"
#include "pages/editserverdialog.h"
#include "pages/servergroupspage.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

namespace {

const QString oddName = "\"$(reboot)\"\n'x'";

/// "name:server server" is a group with its servers; each has an address and keys that this version does not
/// know.
QJsonObject group(const QString &words)
{
    QJsonArray servers;
    for (const QString &name : words.section(':', 1).split(' ', Qt::SkipEmptyParts))
        servers
            += QJsonObject{{Key::serverName, name}, {Key::serverAddress, oddName}, {"later", servers.size()}};
    return {{Key::groupName, words.section(':', 0, 0)}, {Key::servers, servers}, {"later", oddName}};
}

/// The reverse, with the addresses that are new.
QString words(const QJsonArray &groups)
{
    QStringList result;
    for (const QJsonValue &value : groups) {
        QStringList servers;
        for (const QJsonValue &server : value[Key::servers].toArray()) {
            const QString address = server[Key::serverAddress].toString();
            servers += server[Key::serverName].toString()
                + (address == oddName ? QString() : QString("=%1").arg(address));
        }
        result += value[Key::groupName].toString() + ':' + servers.join(' ');
    }
    return result.join(',');
}

/// A document with these groups; the launcher connects to group B by itself.
QJsonObject document(const QJsonArray &groups)
{
    const QJsonObject autoconnect = {{Key::enabled, true}, {Key::type, ItemType::group}, {Key::group, "B"}};
    QJsonObject result = Defaults::document("kt", QJsonObject());
    result.insert(Key::serverGroups, groups);
    result.insert(Key::connection,
                  QJsonObject{{Key::corvidConnection, QJsonObject{{Key::autoconnect, autoconnect}}}});
    return result;
}

const QJsonArray sample{group("A:one two three"), group("B:one"), group("C")};

struct Opened : OpenedPage<ServerGroupsPage>
{
    explicit Opened(const QJsonArray &groups = sample)
        : OpenedPage(document(groups))
    { }

    /// Applies the page: the groups on disk, provided that nothing else has changed there.
    QJsonArray applied()
    {
        QJsonObject before = device.document();
        const bool done = page.isChanged() && page.apply() && !page.isChanged();
        const QJsonObject after = device.document();
        before.insert(Key::serverGroups, after[Key::serverGroups]);
        return done && after == before ? after[Key::serverGroups].toArray() : QJsonArray();
    }

    /// Presses a button and does this in the dialog that comes up; if that leaves it open, it is cancelled.
    template <typename Dialog>
    void inDialog(const char *button, const std::function<void(Dialog &)> &act) const
    {
        QTimer::singleShot(0, qApp, [act] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            act(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        press(page, button);
    }

    void edit(const QString &name) const
    {
        inDialog<EditServerDialog>("editServerButton", [name](EditServerDialog &dialog) {
            part<QLineEdit>(dialog, "nameLineEdit")->setText(name);
            part<QLineEdit>(dialog, "addressLineEdit")->setText(" new ");
            dialog.accept();
        });
    }
};

} // namespace

/// The page of the server groups: what is done to its lists is what is stored, in their order.
class ServerGroupsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void storesWhatIsDoneToTheLists_data()
    {
        // The name for the dialog; the message of a dialog that does not ask for one.
        const TestTable<int, bool, QString, QString, QString> table("row", "accept", "name", "stored",
                                                                    "message");
        const QString same = "A:one two three,B:one,C:";
        const QString remove = "The group you want to remove is autoconnect group. Proceed?";
        const QString rename = "The group you want to rename is autoconnect group. Proceed?";
        const QString repeated = "Group B already exists";
        const QString odd = "$(reboot) \"D\"";
        table.row("groupUpButton", 1, false, {}, "B:one,A:one two three,C:", {});
        table.row("removeGroupButton", 2, false, {}, "A:one two three,B:one", {});
        table.row("serverUpButton", 2, false, {}, "A:one three two,B:one,C:", {});
        table.row("removeServerButton", 1, false, {}, "A:one three,B:one,C:", {});
        table.row("removeGroupButton: auto", 1, true, {}, "A:one two three,C:", remove);
        table.row("renameGroupButton", 0, true, odd, odd + ":one two three,B:one,C:", {});
        table.row("renameGroupButton: auto", 1, true, "D", "A:one two three,D:one,C:", rename);
        table.row("renameGroupButton: kept", 1, false, odd, same, rename);
        table.row("renameGroupButton: repeated", 0, true, "B ", same, repeated);
        table.row("addGroupButton", 0, true, " D ", same + ",D:", {});
    }

    void storesWhatIsDoneToTheLists()
    {
        QFETCH(int, row);
        QFETCH(bool, accept);
        QFETCH(QString, name);
        QFETCH(QString, stored);
        QFETCH(QString, message);
        const QString button = QString(QTest::currentDataTag()).section(':', 0, 0);
        Opened opened;
        const QSignalSpy told(&opened.page, &ServerGroupsPage::groupsChanged);
        choose(opened.page, button.contains("roup") ? "groupsView" : "serversView", row);
        DialogAnswer answer(accept, name);
        press(opened.page, button);
        answer.messages.removeAll("Name of the group:");
        QCOMPARE(answer.messages.join(QString()), message);
        QCOMPARE(words(opened.page.groups()), stored);
        QCOMPARE(opened.page.isChanged(), opened.page.groups() != sample);
        if (!opened.page.isChanged())
            return;
        QCOMPARE(told.last().first().toJsonArray(), opened.page.groups());
        const QJsonArray after = opened.applied();
        QCOMPARE(words(after), stored);
        QCOMPARE(after.at(0)["later"].toString(), oddName);
        opened.page.fill();
        QCOMPARE(opened.page.groups(), after);
    }

    void addsServers_data()
    {
        const TestTable<QString, QStringList, bool, QString, QString> table("typed", "found", "overwrites",
                                                                            "message", "servers");
        const QString there = "Server one already exists in group A";
        table.row("typed", " ONE ", {}, true, "", "one two three ONE=10.1.1.1");
        table.row("typed, there already", "one", {}, true, there, "one=10.1.1.1 two three");
        table.row("typed, and kept", "one", {}, false, there, "one two three");
        table.row("found", {}, {"one", "four"}, true, there, "one=10.0.0.7 two three four=10.0.0.7");
    }

    void addsServers()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, found);
        QFETCH(bool, overwrites);
        Opened opened;
        connect(&opened.page, &ServerGroupsPage::refreshServerList, this, [&](int &error) {
            QMap<QString, QHostAddress> servers;
            for (const QString &name : found)
                servers.insert(name, QHostAddress("10.0.0.7"));
            opened.page.setServerList(servers);
            error = 0;
        });
        const DialogAnswer answer(overwrites);
        opened.inDialog<AddServerDialog>("addServerButton", [&](AddServerDialog &dialog) {
            if (typed.isEmpty()) {
                part<QAbstractItemView>(dialog, "serverView")->selectAll();
                QTimer::singleShot(0, &dialog, [&dialog] { dialog.setServerList({}); }); // while it asks
            } else {
                press(dialog, "enterServerRadioButton");
                part<QLineEdit>(dialog, "nameLineEdit")->setText(typed);
                part<QLineEdit>(dialog, "addressLineEdit")->setText(" 10.1.1.1 ");
            }
            dialog.accept();
        });
        QTEST(answer.messages.join('|'), "message");
        QTEST(words(opened.page.groups()).section(':', 1).section(',', 0, 0), "servers");
    }

    void editsAServer()
    {
        Opened opened;
        choose(opened.page, "serversView", 1);
        const DialogAnswer answer(true);
        opened.edit("  ");
        QCOMPARE(answer.messages, QStringList{"Server name cannot be empty"});
        QVERIFY(!opened.page.isChanged());
        opened.edit(" second ");
        const QJsonArray stored = opened.applied();
        QCOMPARE(words({stored.first()}), "A:one second=new three");
        QCOMPARE(stored.at(0)[Key::servers][1]["later"].toInt(), 1);
    }

    void refusesGroupsThatCannotBeToldApart_data()
    {
        const TestTable<QJsonValue, QString> table("name", "message");
        table.row("repeated", QJsonValue("B "), "Group B is in the list more than once.");
        table.row("empty", QJsonValue(" "), "Group 4 of the list has no name.");
    }

    void refusesGroupsThatCannotBeToldApart()
    {
        QFETCH(QJsonValue, name);
        QFETCH(QString, message);
        QJsonArray groups = sample;
        groups += QJsonObject{{Key::groupName, name}};
        Opened opened(groups);
        press(opened.page, "serverDownButton");
        const DialogAnswer answer(true, "D");
        QVERIFY(!opened.page.apply());
        QCOMPARE(answer.messages, QStringList{message});
        QCOMPARE(opened.device.document(), document(groups));
        QVERIFY(opened.page.isChanged());
        press(opened.page, "renameGroupButton"); // the group meant is chosen
        QCOMPARE(words(opened.applied()), "A:two one three,B:one,C:,D:");
    }

    void leavesOutWhatIsNoGroup()
    {
        QJsonObject strange = group("A:one");
        strange[Key::servers] = QJsonArray{7, strange.value(Key::servers)[0], QJsonArray()};
        QJsonObject none = group("B");
        none[Key::servers] = "text";
        Opened opened({7, strange, none, oddName});
        choose(opened.page, "groupsView", 1);
        press(opened.page, "groupUpButton");
        QCOMPARE(opened.applied(), QJsonArray({none, strange}));
    }
};

QTEST_MAIN(ServerGroupsPageTest)
#include "servergroupspagetest.moc"
