// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "pages/addserverdialog.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using Servers = QMap<QString, QHostAddress>;

Servers found(const QStringList &names)
{
    Servers servers;
    for (const QString &name : names)
        servers.insert(name, QHostAddress(QString("10.0.0.%1").arg(servers.size() + 1)));
    return servers;
}

/// The dialog over a group that has the servers "one" and "two" already.
struct Opened
{
    Opened()
        : target(1)
        , dialog(target, "Office")
    {
        for (const char *name : {"one", "two"})
            target.appendChild(new Item(QLatin1String(name)));
        dialog.show();
    }

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }

    QAbstractItemView *list() const { return part<QAbstractItemView>("serverView"); }

    void pressAdd() const { part<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Ok)->click(); }

    void type(const QString &name, const QString &address) const
    {
        part<QRadioButton>("enterServerRadioButton")->click();
        part<QLineEdit>("nameLineEdit")->setText(name);
        part<QLineEdit>("addressLineEdit")->setText(address);
    }

    /// "name=address" of each server of the group, marked where it has a type.
    QStringList servers() const
    {
        QStringList result;
        for (int row = 0; row < target.rowCount(); ++row) {
            const Item *item = target.topLevelItem(row);
            result += item->getValue(Item::Name) + QLatin1Char('=') + item->getValue(Item::Address)
                + item->getValue(Item::Type);
        }
        return result;
    }

    ItemModel target;
    AddServerDialog dialog;
};

const QString question = "Server %1 already exists in group Office";

} // namespace

/// Servers typed in for a group, or picked from those of the network.
class AddServerDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void addsWhatIsTyped_data()
    {
        const TestTable<QString, bool, QStringList, QString, bool> table("name", "accept", "messages",
                                                                         "servers", "closed");
        table.row("blanks only", " \t ", true, {"Server name cannot be empty"}, "one= two=", false);
        table.row("new", "  three ", true, {}, "one= two= three=10.1.1.1", true);
        table.row("other case", "ONE", true, {}, "one= two= ONE=10.1.1.1", true);
        table.row("overwritten", "one", true, {question.arg("one")}, "one=10.1.1.1 two=", true);
        table.row("kept", "one", false, {question.arg("one")}, "one= two=", false);
    }

    void addsWhatIsTyped()
    {
        QFETCH(QString, name);
        QFETCH(bool, accept);
        const Opened opened;
        QCOMPARE(opened.dialog.windowTitle(), "Add server to Office");
        opened.type(name, " 10.1.1.1  ");
        const DialogAnswer answer(accept);
        opened.pressAdd();
        QTEST(answer.messages, "messages");
        for (const QString &title : answer.titles)
            QCOMPARE(title, "Error");
        QTEST(opened.servers().join(' '), "servers");
        QTEST(opened.dialog.isHidden(), "closed");
    }

    void addsWhatIsPicked()
    {
        Opened opened;
        opened.dialog.setServerList(found({"four", "one", "three"}));
        for (const int row : {2, 0, 1}) // the order of the clicks is not the order of the list
            opened.list()->selectionModel()->select(opened.list()->model()->index(row, 0),
                                                    QItemSelectionModel::Select);
        const DialogAnswer answer(true);
        opened.pressAdd();
        QCOMPARE(answer.messages, QStringList{question.arg("one")});
        QCOMPARE(opened.servers().join(' '), "one=10.0.0.2 two= four=10.0.0.1 three=10.0.0.3");
        QVERIFY(opened.dialog.isHidden());
    }

    void aSearchMayEndWhileItAsks()
    {
        Opened opened;
        opened.dialog.setServerList(found({"one", "two"}));
        opened.list()->selectAll();
        QTimer::singleShot(0, this, [&opened] { opened.dialog.setServerList({}); });
        const DialogAnswer answer(true);
        opened.pressAdd();
        QCOMPARE(answer.messages.size(), 2);
        QCOMPARE(opened.servers().join(' '), "one=10.0.0.1 two=10.0.0.2");
    }

    void picksNoPlaceholder()
    {
        Opened opened;
        const auto shown = [&opened] {
            return opened.list()->model()->index(0, 0).data().toString();
        };
        const QSignalSpy searches(&opened.dialog, &AddServerDialog::refreshServerList);
        opened.part<QToolButton>("refreshButton")->click();
        QCOMPARE(searches.count(), 1);
        QCOMPARE(shown(), "\tSearching...");
        opened.dialog.setServerList({});
        QCOMPARE(shown(), "\tNo Servers found");
        opened.list()->selectAll();
        opened.pressAdd();
        QVERIFY(opened.dialog.isVisible());
        QCOMPARE(opened.target.rowCount(), 2);
    }
};

QTEST_MAIN(AddServerDialogTest)
#include "addserverdialogtest.moc"
