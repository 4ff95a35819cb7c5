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

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

const QString oddName = QStringLiteral("\"$(reboot)\"\n'x'");

/// "name:server server" is a group with its servers; each has an address and keys that this version does not
/// know.
QJsonObject group(const QString &words)
{
    QJsonArray servers;
    for (const QString &name : words.section(QLatin1Char(':'), 1).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        servers += QJsonObject{{Key::serverName, name},
                               {Key::serverAddress, oddName},
                               {QStringLiteral("later"), servers.size()}};
    return {{Key::groupName, words.section(QLatin1Char(':'), 0, 0)},
            {Key::servers, servers},
            {QStringLiteral("later"), oddName}};
}

QString words(const QJsonArray &groups)
{
    QStringList result;
    for (const QJsonValue &value : groups) {
        QStringList servers;
        for (const QJsonValue &server : value.toObject().value(Key::servers).toArray())
            servers += server.toObject().value(Key::serverName).toString();
        result += value.toObject().value(Key::groupName).toString() + QLatin1Char(':')
            + servers.join(QLatin1Char(' '));
    }
    return result.join(QLatin1Char(','));
}

/// A document with these groups; the launcher connects to group B by itself.
QJsonObject document(const QJsonArray &groups)
{
    const QJsonObject autoconnect
        = {{Key::enabled, true}, {Key::type, ItemType::group}, {Key::group, QStringLiteral("B")}};
    QJsonObject result = Defaults::document(QStringLiteral("kt"), QJsonObject());
    result.insert(Key::serverGroups, groups);
    result.insert(Key::connection,
                  QJsonObject{{Key::corvidConnection, QJsonObject{{Key::autoconnect, autoconnect}}}});
    return result;
}

QJsonObject sample()
{
    return document({group(QStringLiteral("A:one two three")), group(QStringLiteral("B:one")),
                     group(QStringLiteral("C"))});
}

/// The page over a device's document, as it is when it has just been entered.
struct Opened
{
    explicit Opened(const TestDevice &where, const QJsonObject &document = sample())
        : device(where)
        , configuration(QStringLiteral("config.json"), true)
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

    QByteArray file() const { return device.read(QStringLiteral("/var/lib/kt964/config.json")); }

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
    dialog.findChild<QLineEdit *>(QStringLiteral("nameLineEdit"))->setText(name);
    dialog.findChild<QLineEdit *>(QStringLiteral("addressLineEdit"))->setText(QStringLiteral(" new "));
    dialog.accept();
}

} // namespace

/// The page of the server groups: what is done to its lists is what is stored, in their order.
class ServerGroupsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void showsGroupsAndTheServersOfOne();
    void storesWhatIsDoneToTheLists_data();
    void storesWhatIsDoneToTheLists();
    void addsServersTypedAndFound();
    void editsAServer();
    void refusesGroupsThatCannotBeToldApart_data();
    void refusesGroupsThatCannotBeToldApart();
    void survivesWrongTypes();
    void staysFluidWithThousands();

private:
    TestDevice m_device;
};

void ServerGroupsPageTest::showsGroupsAndTheServersOfOne()
{
    const Opened opened(m_device);
    const auto shown = [&opened](const char *list, int row, int column = 0) {
        return opened.list(list)->model()->index(row, column).data().toString();
    };
    QCOMPARE(opened.list("groupsView")->model()->rowCount(), 3);
    QCOMPARE(opened.list("serversView")->model()->rowCount(), 3);
    QCOMPARE(shown("groupsView", 1), QStringLiteral("B"));
    QCOMPARE(shown("serversView", 2), QStringLiteral("three"));
    QCOMPARE(shown("serversView", 2, 1), oddName);
    opened.choose("groupsView", 1);
    QCOMPARE(opened.list("serversView")->model()->rowCount(), 1);
    QVERIFY(opened.list("groupsView")->currentIndex().data(Qt::FontRole).value<QFont>().italic());
    opened.choose("groupsView", 2);
    QCOMPARE(opened.list("serversView")->model()->rowCount(), 0);
    QVERIFY(!opened.page.isChanged());
}

void ServerGroupsPageTest::storesWhatIsDoneToTheLists_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("accept"); // the dialogs
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("message"); // of a dialog that does not ask for a name
    const QString same = QStringLiteral("A:one two three,B:one,C:");
    const QString remove = QStringLiteral("The group you want to remove is autoconnect group. Proceed?");
    const QString rename = QStringLiteral("The group you want to rename is autoconnect group. Proceed?");
    const QString empty = QStringLiteral("Group name cannot be empty");
    const QString repeated = QStringLiteral("Group B already exists");
    const QString odd = QStringLiteral("$(reboot) \"D\"");
    const auto add = [](const char *button, int row, bool accept, const QString &name, const QString &stored,
                        const QString &message = QString()) {
        QTest::newRow(button) << row << accept << name << stored << message;
    };
    const auto press = [](const char *button, int row, const char *stored) {
        QTest::newRow(button) << row << false << QString() << QString::fromLatin1(stored) << QString();
    };
    press("groupUpButton", 1, "B:one,A:one two three,C:");
    press("groupDownButton", 1, "A:one two three,C:,B:one");
    press("removeGroupButton", 2, "A:one two three,B:one");
    press("serverUpButton", 2, "A:one three two,B:one,C:");
    press("serverDownButton", 0, "A:two one three,B:one,C:");
    press("removeServerButton", 1, "A:one three,B:one,C:");
    add("removeGroupButton: auto", 1, true, {}, QStringLiteral("A:one two three,C:"), remove);
    add("removeGroupButton: kept", 1, false, {}, same, remove);
    add("renameGroupButton", 0, true, odd, odd + QStringLiteral(":one two three,B:one,C:"));
    add("renameGroupButton: as before", 0, true, QStringLiteral(" A"), same);
    add("renameGroupButton: auto", 1, true, odd, QStringLiteral("A:one two three,%1:one,C:").arg(odd),
        rename);
    add("renameGroupButton: kept", 1, false, odd, same, rename);
    add("renameGroupButton: empty", 0, true, QStringLiteral("  "), same, empty);
    add("renameGroupButton: repeated", 0, true, QStringLiteral("B "), same, repeated);
    add("addGroupButton", 0, true, QStringLiteral(" D "), same + QStringLiteral(",D:"));
    add("addGroupButton: empty", 0, true, {}, same, empty);
    add("addGroupButton: repeated", 0, true, QStringLiteral(" B"), same, repeated);
    add("addGroupButton: cancelled", 0, false, odd, same);
}

void ServerGroupsPageTest::storesWhatIsDoneToTheLists()
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
    answer.messages.removeAll(QStringLiteral("Name of the group:"));
    QCOMPARE(answer.messages.join(QString()), message);
    QCOMPARE(words(opened.page.groups()), stored);
    QCOMPARE(opened.page.isChanged(), opened.page.groups() != before);
    if (!opened.page.isChanged())
        return;
    QCOMPARE(told.last().first().toJsonArray(), opened.page.groups());
    const QJsonArray after = opened.applied();
    QCOMPARE(words(after), stored);
    QCOMPARE(after.at(0).toObject().value(QLatin1String("later")).toString(), oddName);
    opened.page.fill();
    QCOMPARE(opened.page.groups(), after);
}

void ServerGroupsPageTest::addsServersTypedAndFound()
{
    Opened opened(m_device);
    int searches = 0;
    connect(&opened.page, &ServerGroupsPage::refreshServerList, this, [&](int &error) {
        ++searches;
        error = 0;
        opened.page.setServerList({{QStringLiteral("found"), QHostAddress(QStringLiteral("10.0.0.7"))}});
    });
    opened.choose("groupsView", 1);
    inDialog<AddServerDialog>([](AddServerDialog &dialog) {
        dialog.findChild<QAbstractItemView *>(QStringLiteral("serverView"))->selectAll();
        dialog.accept();
    });
    opened.press("addServerButton");
    QCOMPARE(searches, 1);
    const QJsonObject found
        = opened.page.groups().at(1).toObject().value(Key::servers).toArray().at(1).toObject();
    QCOMPARE(found,
             QJsonObject({{Key::serverName, QStringLiteral("found")},
                          {Key::serverAddress, QStringLiteral("10.0.0.7")}}));
    inDialog<EditServerDialog>([](EditServerDialog &dialog) { editIn(dialog, QStringLiteral("mine")); });
    opened.press("editServerButton"); // what was added is chosen
    inDialog<AddServerDialog>([](AddServerDialog &dialog) {
        dialog.findChild<QRadioButton *>(QStringLiteral("enterServerRadioButton"))->click();
        dialog.findChild<QLineEdit *>(QStringLiteral("nameLineEdit"))->setText(oddName);
        dialog.accept();
    });
    opened.press("addServerButton");
    opened.press("serverUpButton");
    const QJsonObject stored = opened.applied().at(1).toObject();
    QCOMPARE(words({stored}), QStringLiteral("B:one %1 mine").arg(oddName));
    QCOMPARE(stored.value(Key::servers).toArray().at(2).toObject(),
             QJsonObject(
                 {{Key::serverName, QStringLiteral("mine")}, {Key::serverAddress, QStringLiteral("new")}}));
    inDialog<AddServerDialog>([](AddServerDialog &) {});
    opened.press("addServerButton");
    QVERIFY(!opened.page.isChanged());
}

void ServerGroupsPageTest::editsAServer()
{
    Opened opened(m_device);
    opened.choose("serversView", 1);
    const auto edit = [&opened](const QString &name) {
        inDialog<EditServerDialog>([name](EditServerDialog &dialog) { editIn(dialog, name); });
        opened.press("editServerButton");
    };
    const DialogAnswer answer(true);
    edit(QStringLiteral("  "));
    QCOMPARE(answer.messages, QStringList{QStringLiteral("Server name cannot be empty")});
    QVERIFY(!opened.page.isChanged());
    edit(QStringLiteral(" second "));
    const QJsonObject stored = opened.applied().at(0).toObject();
    QCOMPARE(words({stored}), QStringLiteral("A:one second three"));
    const QJsonObject server = stored.value(Key::servers).toArray().at(1).toObject();
    QCOMPARE(server.value(Key::serverAddress).toString(), QStringLiteral("new"));
    QCOMPARE(server.value(QLatin1String("later")).toInt(), 1);
}

void ServerGroupsPageTest::refusesGroupsThatCannotBeToldApart_data()
{
    QTest::addColumn<QJsonValue>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("repeated") << QJsonValue(QStringLiteral("B ")) << "Group B is in the list more than once.";
    QTest::newRow("empty") << QJsonValue(QStringLiteral(" ")) << "Group 4 of the list has no name.";
    QTest::newRow("no text") << QJsonValue(7) << "Group 4 of the list has no name.";
}

void ServerGroupsPageTest::refusesGroupsThatCannotBeToldApart()
{
    QFETCH(QJsonValue, name);
    QFETCH(QString, message);
    QJsonArray groups = sample().value(Key::serverGroups).toArray();
    groups += QJsonObject{{Key::groupName, name}};
    Opened opened(m_device, document(groups));
    opened.press("serverDownButton");
    const QByteArray before = opened.file();
    const DialogAnswer answer(true, QStringLiteral("D"));
    QVERIFY(!opened.page.apply());
    QCOMPARE(answer.messages, QStringList{message});
    QCOMPARE(opened.file(), before);
    QVERIFY(opened.page.isChanged());
    opened.press("renameGroupButton"); // the group meant is chosen
    QCOMPARE(words(opened.applied()), QStringLiteral("A:two one three,B:one,C:,D:"));
}

void ServerGroupsPageTest::survivesWrongTypes()
{
    const DialogAnswer answer(true, QStringLiteral("D"));
    for (const QJsonValue &wrong : {QJsonValue(7), QJsonValue(QJsonObject()), QJsonValue()}) {
        QJsonObject broken = sample();
        broken.insert(Key::serverGroups, wrong);
        broken.insert(Key::connection, wrong);
        Opened opened(m_device, broken);
        opened.press("addGroupButton");
        QCOMPARE(words(opened.applied()), QStringLiteral("D:"));
    }
    QJsonObject strange = group(QStringLiteral("A:one"));
    strange.insert(Key::servers, QJsonArray{7, strange.value(Key::servers).toArray().first(), QJsonArray()});
    QJsonObject none = group(QStringLiteral("B"));
    none.insert(Key::servers, QStringLiteral("text"));
    Opened opened(m_device, document({7, strange, none, oddName}));
    opened.choose("groupsView", 1);
    opened.press("groupUpButton");
    QCOMPARE(opened.applied(), QJsonArray({none, strange}));
}

void ServerGroupsPageTest::staysFluidWithThousands()
{
    QJsonArray groups;
    QString servers;
    for (int i = 0; i < 5000; ++i) {
        groups += group(QStringLiteral("G%1:a b").arg(i));
        servers += QStringLiteral(" s%1").arg(i);
    }
    groups.prepend(group(QLatin1String("A:") + servers));
    Opened opened(m_device, document(groups));
    QElapsedTimer time;
    time.start();
    opened.page.fill();
    for (const char *button :
         {"serverDownButton", "serverDownButton", "removeServerButton", "groupDownButton"})
        opened.press(button);
    QVERIFY2(time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
    const QJsonArray after = opened.applied();
    QCOMPARE(after.size(), 5001);
    QCOMPARE(words({after.at(0)}), QStringLiteral("G0:a b"));
    QCOMPARE(after.at(1).toObject().value(Key::servers).toArray().size(), 4999);
}

QTEST_MAIN(ServerGroupsPageTest)
#include "servergroupspagetest.moc"
