// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "pages/addserverdialog.h"
#include "pages/editserverdialog.h"
#include "pages/servergroupspage.h"
#include "testdevice.h"
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

QString words(const QJsonArray &groups)
{
    QStringList result;
    for (const QJsonValue &value : groups) {
        QStringList servers;
        for (const QJsonValue &server : value.toObject().value(Key::servers).toArray())
            servers += server.toObject().value(Key::serverName).toString();
        result += value.toObject().value(Key::groupName).toString() + QLatin1Char(':') + servers.join(' ');
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

QJsonObject sample()
{
    return document({group("A:one two three"), group("B:one"), group("C")});
}

/// The page over a device's document, as it is when it has just been entered.
struct Opened
{
    explicit Opened(const TestDevice &where, const QJsonObject &document = sample())
        : device(where)
        , configuration("config.json", true)
        , page(configuration)
    {
        device.setDocument(document);
        configuration.readContent();
        page.fill();
    }

    QAbstractItemView *list(const char *name) const
    {
        return page.findChild<QAbstractItemView *>(QLatin1String(name));
    }

    void choose(const char *name, int row) const
    {
        list(name)->setCurrentIndex(list(name)->model()->index(row, 0));
    }

    void press(const char *name) const { page.findChild<QPushButton *>(QLatin1String(name))->click(); }

    QByteArray file() const { return device.read("/var/lib/kt964/config.json"); }

    /// Applies the page: the groups on disk, provided that nothing else has changed there.
    QJsonArray applied()
    {
        QJsonObject before = device.document();
        const bool done = page.isChanged() && page.apply() && !page.isChanged();
        const QJsonObject after = device.document();
        before.insert(Key::serverGroups, after.value(Key::serverGroups));
        return done && after == before ? after.value(Key::serverGroups).toArray() : QJsonArray();
    }

    const TestDevice &device;
    JsonModule configuration;
    ServerGroupsPage page;
};

/// What is done with the dialog of this kind when it comes up; if that leaves it open, it is cancelled.
template <typename Dialog>
void inDialog(const std::function<void(Dialog &)> &act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        act(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

void editIn(EditServerDialog &dialog, const QString &name)
{
    dialog.findChild<QLineEdit *>("nameLineEdit")->setText(name);
    dialog.findChild<QLineEdit *>("addressLineEdit")->setText(" new ");
    dialog.accept();
}

} // namespace

/// The page of the server groups: what is done to its lists is what is stored, in their order.
class ServerGroupsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void showsGroupsAndTheServersOfOne()
    {
        const Opened opened(m_device);
        const auto shown = [&opened](const char *list, int row, int column = 0) {
            return opened.list(list)->model()->index(row, column).data().toString();
        };
        QCOMPARE(opened.list("groupsView")->model()->rowCount(), 3);
        QCOMPARE(opened.list("serversView")->model()->rowCount(), 3);
        QCOMPARE(shown("groupsView", 1), "B");
        QCOMPARE(shown("serversView", 2), "three");
        QCOMPARE(shown("serversView", 2, 1), oddName);
        opened.choose("groupsView", 1);
        QCOMPARE(opened.list("serversView")->model()->rowCount(), 1);
        QVERIFY(opened.list("groupsView")->currentIndex().data(Qt::FontRole).value<QFont>().italic());
        opened.choose("groupsView", 2);
        QCOMPARE(opened.list("serversView")->model()->rowCount(), 0);
        QVERIFY(!opened.page.isChanged());
    }

    void storesWhatIsDoneToTheLists_data()
    {
        // The name for the dialog; the message of a dialog that does not ask for one.
        const TestTable<int, bool, QString, QString, QString> table("row", "accept", "name", "stored",
                                                                    "message");
        const QString same = "A:one two three,B:one,C:";
        const QString remove = "The group you want to remove is autoconnect group. Proceed?";
        const QString rename = "The group you want to rename is autoconnect group. Proceed?";
        const QString empty = "Group name cannot be empty";
        const QString repeated = "Group B already exists";
        const QString odd = "$(reboot) \"D\"";
        const auto add = [&table](const char *button, int row, bool accept, const QString &name,
                                  const QString &stored, const QString &message = QString()) {
            table.row(button, row, accept, name, stored, message);
        };
        const auto press = [&table](const char *button, int row, const char *stored) {
            table.row(button, row, false, {}, QString::fromLatin1(stored), {});
        };
        press("groupUpButton", 1, "B:one,A:one two three,C:");
        press("groupDownButton", 1, "A:one two three,C:,B:one");
        press("removeGroupButton", 2, "A:one two three,B:one");
        press("serverUpButton", 2, "A:one three two,B:one,C:");
        press("serverDownButton", 0, "A:two one three,B:one,C:");
        press("removeServerButton", 1, "A:one three,B:one,C:");
        add("removeGroupButton: auto", 1, true, {}, "A:one two three,C:", remove);
        add("removeGroupButton: kept", 1, false, {}, same, remove);
        add("renameGroupButton", 0, true, odd, odd + ":one two three,B:one,C:");
        add("renameGroupButton: as before", 0, true, " A", same);
        add("renameGroupButton: auto", 1, true, odd, QString("A:one two three,%1:one,C:").arg(odd), rename);
        add("renameGroupButton: kept", 1, false, odd, same, rename);
        add("renameGroupButton: empty", 0, true, "  ", same, empty);
        add("renameGroupButton: repeated", 0, true, "B ", same, repeated);
        add("addGroupButton", 0, true, " D ", same + ",D:");
        add("addGroupButton: empty", 0, true, {}, same, empty);
        add("addGroupButton: repeated", 0, true, " B", same, repeated);
        add("addGroupButton: cancelled", 0, false, odd, same);
    }

    void storesWhatIsDoneToTheLists()
    {
        QFETCH(int, row);
        QFETCH(bool, accept);
        QFETCH(QString, name);
        QFETCH(QString, stored);
        QFETCH(QString, message);
        const QByteArray button = QByteArray(QTest::currentDataTag()).split(':').first();
        Opened opened(m_device);
        const QJsonArray before = opened.page.groups();
        const QSignalSpy told(&opened.page, &ServerGroupsPage::groupsChanged);
        opened.choose(button.contains("roup") ? "groupsView" : "serversView", row);
        DialogAnswer answer(accept, name);
        opened.press(button);
        answer.messages.removeAll("Name of the group:");
        QCOMPARE(answer.messages.join(QString()), message);
        QCOMPARE(words(opened.page.groups()), stored);
        QCOMPARE(opened.page.isChanged(), opened.page.groups() != before);
        if (!opened.page.isChanged())
            return;
        QCOMPARE(told.last().first().toJsonArray(), opened.page.groups());
        const QJsonArray after = opened.applied();
        QCOMPARE(words(after), stored);
        QCOMPARE(after.at(0).toObject().value("later").toString(), oddName);
        opened.page.fill();
        QCOMPARE(opened.page.groups(), after);
    }

    void addsServersTypedAndFound()
    {
        Opened opened(m_device);
        int searches = 0;
        connect(&opened.page, &ServerGroupsPage::refreshServerList, this, [&](int &error) {
            ++searches;
            error = 0;
            opened.page.setServerList({{"found", QHostAddress("10.0.0.7")}});
        });
        opened.choose("groupsView", 1);
        inDialog<AddServerDialog>([](AddServerDialog &dialog) {
            dialog.findChild<QAbstractItemView *>("serverView")->selectAll();
            dialog.accept();
        });
        opened.press("addServerButton");
        QCOMPARE(searches, 1);
        const QJsonObject found
            = opened.page.groups().at(1).toObject().value(Key::servers).toArray().at(1).toObject();
        QCOMPARE(found, QJsonObject({{Key::serverName, "found"}, {Key::serverAddress, "10.0.0.7"}}));
        inDialog<EditServerDialog>([](EditServerDialog &dialog) { editIn(dialog, "mine"); });
        opened.press("editServerButton"); // what was added is chosen
        inDialog<AddServerDialog>([](AddServerDialog &dialog) {
            dialog.findChild<QRadioButton *>("enterServerRadioButton")->click();
            dialog.findChild<QLineEdit *>("nameLineEdit")->setText(oddName);
            dialog.accept();
        });
        opened.press("addServerButton");
        opened.press("serverUpButton");
        const QJsonObject stored = opened.applied().at(1).toObject();
        QCOMPARE(words({stored}), QString("B:one %1 mine").arg(oddName));
        QCOMPARE(stored.value(Key::servers).toArray().at(2).toObject(),
                 QJsonObject({{Key::serverName, "mine"}, {Key::serverAddress, "new"}}));
        inDialog<AddServerDialog>([](AddServerDialog &) {});
        opened.press("addServerButton");
        QVERIFY(!opened.page.isChanged());
    }

    void editsAServer()
    {
        Opened opened(m_device);
        opened.choose("serversView", 1);
        const auto edit = [&opened](const QString &name) {
            inDialog<EditServerDialog>([name](EditServerDialog &dialog) { editIn(dialog, name); });
            opened.press("editServerButton");
        };
        const DialogAnswer answer(true);
        edit("  ");
        QCOMPARE(answer.messages, QStringList{"Server name cannot be empty"});
        QVERIFY(!opened.page.isChanged());
        edit(" second ");
        const QJsonObject stored = opened.applied().at(0).toObject();
        QCOMPARE(words({stored}), "A:one second three");
        const QJsonObject server = stored.value(Key::servers).toArray().at(1).toObject();
        QCOMPARE(server.value(Key::serverAddress).toString(), "new");
        QCOMPARE(server.value("later").toInt(), 1);
    }

    void refusesGroupsThatCannotBeToldApart_data()
    {
        const TestTable<QJsonValue, QString> table("name", "message");
        table.row("repeated", QJsonValue("B "), "Group B is in the list more than once.");
        table.row("empty", QJsonValue(" "), "Group 4 of the list has no name.");
        table.row("no text", QJsonValue(7), "Group 4 of the list has no name.");
    }

    void refusesGroupsThatCannotBeToldApart()
    {
        QFETCH(QJsonValue, name);
        QFETCH(QString, message);
        QJsonArray groups = sample().value(Key::serverGroups).toArray();
        groups += QJsonObject{{Key::groupName, name}};
        Opened opened(m_device, document(groups));
        opened.press("serverDownButton");
        const QByteArray before = opened.file();
        const DialogAnswer answer(true, "D");
        QVERIFY(!opened.page.apply());
        QCOMPARE(answer.messages, QStringList{message});
        QCOMPARE(opened.file(), before);
        QVERIFY(opened.page.isChanged());
        opened.press("renameGroupButton"); // the group meant is chosen
        QCOMPARE(words(opened.applied()), "A:two one three,B:one,C:,D:");
    }

    void survivesWrongTypes()
    {
        const DialogAnswer answer(true, "D");
        for (const QJsonValue &wrong : {QJsonValue(7), QJsonValue(QJsonObject()), QJsonValue()}) {
            QJsonObject broken = sample();
            broken.insert(Key::serverGroups, wrong);
            broken.insert(Key::connection, wrong);
            Opened opened(m_device, broken);
            opened.press("addGroupButton");
            QCOMPARE(words(opened.applied()), "D:");
        }
        QJsonObject strange = group("A:one");
        strange.insert(Key::servers,
                       QJsonArray{7, strange.value(Key::servers).toArray().first(), QJsonArray()});
        QJsonObject none = group("B");
        none.insert(Key::servers, "text");
        Opened opened(m_device, document({7, strange, none, oddName}));
        opened.choose("groupsView", 1);
        opened.press("groupUpButton");
        QCOMPARE(opened.applied(), QJsonArray({none, strange}));
    }

private:
    TestDevice m_device;
};

QTEST_MAIN(ServerGroupsPageTest)
#include "servergroupspagetest.moc"
