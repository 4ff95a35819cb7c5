// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "openedpage.h"
#include "pages/connectionpage.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QJsonArray groups()
{
    const QJsonObject server = {{Key::serverName, "one"}, {Key::serverAddress, "host"}};
    return {QJsonObject{{Key::groupName, "Office"}, {Key::servers, QJsonArray{server}}},
            QJsonObject{{Key::groupName, "Nobody"}, {Key::servers, QJsonArray()}}};
}

QJsonObject sample()
{
    QJsonObject document = Defaults::document("kt", QJsonObject());
    QJsonObject connection = document[Key::connection].toObject();
    connection.insert("of the future", 1);
    document[Key::connection] = connection;
    document[Key::serverGroups] = groups();
    return document;
}

} // namespace

/// The page of the connections: what would leave the launcher without a target is refused.
class ConnectionPageTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesAndSavesNothing_data()
    {
        // The boxes that are ticked, and a field with what is typed into it.
        const TestTable<QStringList, QString, QString, QString> table("ticked", "field", "text", "message");
        const QStringList toServer{"autoConnectCheckBox", "autoConnectServerRadioButton"};
        const QString address = "autoConnectServerAddressLineEdit";
        const QString broker = "brokerAddressLineEdit";
        table.row("blanks in the server", toServer, address, "a b", "blanks: a b");
        table.row("no group", {"autoConnectCheckBox"}, address, "", "needs a group");
        table.row("no broker", {"autoLogonCheckBox"}, broker, " ", "SOLVA broker");
        table.row("blanks in the broker", {}, broker, "a b", "blanks: a b");
    }

    void refusesAndSavesNothing()
    {
        QFETCH(QStringList, ticked);
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(QString, message);
        OpenedPage<ConnectionPage> opened(sample());
        part<QComboBox>(opened.page, "autoConnectGroupComboBox")->setCurrentIndex(-1);
        for (const QString &box : ticked)
            press(opened.page, box);
        part<QLineEdit>(opened.page, field)->setText("x");
        part<QLineEdit>(opened.page, field)->setText(text);
        const DialogAnswer answer(true);
        QVERIFY(!opened.page.apply());
        QCOMPARE(answer.messages.size(), 1);
        QVERIFY2(answer.messages.first().contains(message), qPrintable(answer.messages.first()));
        QCOMPARE(opened.device.document(), sample());
        QVERIFY(opened.page.isChanged());
    }

    void asksOtherPagesForGroupsAndUser()
    {
        QJsonArray present = groups();
        QString user;
        OpenedPage<ConnectionPage> opened(
            sample(), [&present] { return present; }, [&user] { return user; });
        QSignalSpy chosen(&opened.page, &ConnectionPage::autoConnectGroupChanged);
        auto *box = part<QComboBox>(opened.page, "autoConnectGroupComboBox");
        press(opened.page, "autoConnectCheckBox");
        box->setCurrentText("Nobody");
        const DialogAnswer answer(true);
        QVERIFY(!opened.page.apply());
        QVERIFY(answer.messages.last().contains("Nobody has no servers"));
        box->setCurrentText("Office");
        QCOMPARE(chosen.takeLast(), QVariantList{"Office"});
        QVERIFY(opened.page.apply());
        const QJsonValue stored = opened.device.document()[Key::connection];
        QCOMPARE(stored[Key::corvidConnection][Key::autoconnect][Key::group].toString(), "Office");
        QCOMPARE(stored["of the future"].toInt(), 1);

        // A group that goes stays chosen, which is no change of this page, and is refused with the next one.
        present.removeFirst();
        opened.page.setGroups(present);
        QVERIFY(!opened.page.isChanged());
        QCOMPARE(opened.page.autoConnectGroup(), "Office");
        part<QLineEdit>(opened.page, "brokerAddressLineEdit")->setText("broker");
        press(opened.page, "autoLogonCheckBox");
        QVERIFY(!opened.page.apply());
        QVERIFY(answer.messages.last().contains("group Office does not exist"));
        opened.page.setGroups(present = groups());
        QVERIFY(!opened.page.apply());
        QVERIFY(answer.messages.last().contains("needs a user name"));
        user = "berta";
        QVERIFY(opened.page.apply());
    }
};

QTEST_MAIN(ConnectionPageTest)
#include "connectionpagetest.moc"
