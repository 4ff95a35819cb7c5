// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "dialoganswer.h"
#include "pages/connectionpage.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// Widgets by name, and what is entered into them.
using Inputs = QVector<QPair<const char *, const char *>>;

const QString oddName = "\"$(reboot)\"\n'x'";

QJsonObject withValue(QJsonObject object, QStringList path, const QJsonValue &value)
{
    const QString key = path.takeFirst();
    object.insert(key, path.isEmpty() ? value : withValue(object.value(key).toObject(), path, value));
    return object;
}

QJsonArray groups()
{
    const QJsonObject server = {{Key::serverName, "one"}, {Key::serverAddress, oddName}};
    return {QJsonObject{{Key::groupName, "Office"}, {Key::servers, QJsonArray{server}}},
            QJsonObject{{Key::groupName, oddName}, {Key::servers, QJsonArray{server}}},
            QJsonObject{{Key::groupName, "Nobody"}, {Key::servers, QJsonArray()}}};
}

/// A document with a value of its own for every key, and keys that this version does not know.
QJsonObject sample()
{
    const QStringList connection = {Key::connection};
    const QStringList corvid = connection + QStringList{Key::corvidConnection};
    const QStringList solva = connection + QStringList{Key::solvaConnection};
    QJsonObject document = Defaults::document("kt", QJsonObject());
    document.insert(Key::serverGroups, groups());
    document = withValue(document, corvid + QStringList{Key::autoconnect, Key::group}, "Office");
    document
        = withValue(document, corvid + QStringList{Key::autoconnect, Key::server, Key::serverName}, oddName);
    document = withValue(document, corvid + QStringList{Key::autoconnect, Key::server, Key::serverAddress},
                         " 10.0.0.1\n");
    document = withValue(document, solva + QStringList{Key::brokerAddress}, "broker:8443");
    document = withValue(document, {Key::autologon, Key::username}, "anna");
    for (const QStringList &section : {connection, corvid, solva, corvid + QStringList{Key::autoconnect}})
        document = withValue(document, section + QStringList{"of the future"}, oddName);
    return document;
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

    template <typename Widget = QWidget>
    Widget *part(const char *name) const
    {
        return page.findChild<Widget *>(QLatin1String(name));
    }

    /// A button is switched to "true" or "false".
    void enter(const char *name, const char *value) const
    {
        const QString text = QString::fromUtf8(value);
        if (auto *button = part<QAbstractButton>(name))
            button->setChecked(QVariant(text).toBool());
        else if (auto *box = part<QComboBox>(name))
            box->setCurrentIndex(box->findText(text));
        else
            part<QLineEdit>(name)->setText(text);
    }

    QString shown(const char *name) const
    {
        if (auto *button = part<QAbstractButton>(name))
            return QVariant(button->isChecked()).toString();
        auto *box = part<QComboBox>(name);
        return box ? box->currentText() : part<QLineEdit>(name)->text();
    }

    QByteArray file() const { return device.read("/var/lib/kt964/config.json"); }

    const TestDevice &device;
    JsonModule configuration;
    ConnectionPage page;
};

} // namespace

Q_DECLARE_METATYPE(Inputs)

/// The page of the connections: every field finds its key, and what would leave the launcher without a
/// target is refused.
class ConnectionPageTest : public QObject
{
    Q_OBJECT

private slots:
    void storesEachFieldAndNothingElse_data()
    {
        const TestTable<QByteArray, QStringList, QJsonValue> table("value", "path", "stored");
        const auto row = [&table](const char *field, const char *value, const QStringList &path,
                                  const QJsonValue &stored = {}) {
            table.row(field, QByteArray(value), path,
                      (stored.isNull() ? QString::fromLatin1(value) : stored));
        };
        const QString corvid = Key::corvidConnection;
        const QString solva = Key::solvaConnection;
        const QString rdp = Key::rdpConnection;
        const QStringList server = {corvid, Key::autoconnect, Key::server};
        row("allowManualAddressCheckBox", "false", {corvid, Key::allowManualAddress}, false);
        row("showAutodetectedCheckBox", "false", {corvid, Key::showAutodetected}, false);
        row("autoConnectCheckBox", "true", {corvid, Key::autoconnect, Key::enabled}, true);
        row("autoConnectServerRadioButton", "true", {corvid, Key::autoconnect, Key::type}, ItemType::server);
        row("autoConnectServerNameLineEdit", "a \"b\"", server + QStringList{Key::serverName});
        row("autoConnectServerAddressLineEdit", "host", server + QStringList{Key::serverAddress});
        row("autoConnectGroupComboBox", "\"$(reboot)\" 'x'", {corvid, Key::autoconnect, Key::group}, oddName);
        row("brokerAddressLineEdit", "$(reboot)", {solva, Key::brokerAddress});
        row("allowCustomBrokersCheckBox", "true", {solva, Key::allowCustomBrokers}, true);
        row("defaultProtocolComboBox", "ZMP", {solva, Key::defaultProtocol});
        row("autoLogonCheckBox", "true", {solva, Key::autoconnect, Key::enabled}, true);
        row("desktopLineEdit", "My desktop", {solva, Key::autoconnect, Key::desktop});
        row("rdpServerAddressLineEdit", "rdp.example", {rdp, Key::rdpServerAddress});
        row("allowCustomRdpServersCheckBox", "true", {rdp, Key::allowCustomRdpServers}, true);
    }

    void storesEachFieldAndNothingElse()
    {
        QFETCH(QByteArray, value);
        QFETCH(QStringList, path);
        QFETCH(QJsonValue, stored);
        const char *field = QTest::currentDataTag();
        Opened opened(m_device);
        const bool typed = opened.part<QLineEdit>(field);
        opened.enter(field, typed ? " " + value + "\n" : value);
        QVERIFY(opened.page.isChanged());
        QVERIFY(opened.page.apply());
        QCOMPARE(opened.device.document(), withValue(sample(), QStringList{Key::connection} + path, stored));
        opened.page.fill();
        QCOMPARE(opened.shown(field), QString::fromUtf8(value));
        QVERIFY(!opened.page.isChanged());
    }

    void refusesAndSavesNothing_data()
    {
        const TestTable<Inputs, QString> table("inputs", "message");
        const Inputs::value_type connects("autoConnectCheckBox", "true");
        const Inputs::value_type toServer("autoConnectServerRadioButton", "true");
        const Inputs::value_type logsOn("autoLogonCheckBox", "true");
        table.row("no server", {connects, toServer, {"autoConnectServerAddressLineEdit", "  "}},
                  "needs the address of a server");
        table.row("blanks in the server", {connects, toServer, {"autoConnectServerAddressLineEdit", "a b"}},
                  "blanks: a b");
        table.row("blanks in a server off", {{"autoConnectServerAddressLineEdit", "a\tb"}}, "blanks: a\tb");
        table.row("no group", {connects, {"autoConnectGroupComboBox", ""}}, "needs a group");
        table.row("empty group", {connects, {"autoConnectGroupComboBox", "Nobody"}}, "Nobody has no servers");
        table.row("no broker", {logsOn, {"brokerAddressLineEdit", " "}}, "SOLVA broker");
        table.row("blanks in the broker", {{"brokerAddressLineEdit", "a b"}}, "blanks: a b");
        table.row("blanks in the RDP server", {{"rdpServerAddressLineEdit", "a\nb"}}, "blanks: a\nb");
    }

    void refusesAndSavesNothing()
    {
        QFETCH(Inputs, inputs);
        QFETCH(QString, message);
        Opened opened(m_device);
        for (const auto &input : qAsConst(inputs))
            opened.enter(input.first, input.second);
        const QByteArray before = opened.file();
        const DialogAnswer answer(true);
        QVERIFY(!opened.page.apply());
        QCOMPARE(answer.messages.size(), 1);
        QVERIFY2(answer.messages.first().contains(message), qPrintable(answer.messages.first()));
        QCOMPARE(opened.file(), before);
        QVERIFY(opened.page.isChanged());
    }

    void survivesWrongTypes()
    {
        const QStringList connection = {Key::connection};
        for (const QStringList &path :
             {connection, connection + QStringList{Key::corvidConnection}, QStringList{Key::serverGroups},
              connection + QStringList{Key::solvaConnection, Key::autoconnect},
              connection + QStringList{Key::corvidConnection, Key::autoconnect, Key::server},
              connection + QStringList{Key::rdpConnection, Key::rdpServerAddress}}) {
            for (const QJsonValue &wrong : {QJsonValue(7), QJsonValue(QJsonArray{true}), QJsonValue()}) {
                const QJsonObject broken = withValue(sample(), path, wrong);
                Opened opened(m_device, broken);
                opened.enter("rdpServerAddressLineEdit", "healed");
                QVERIFY(opened.page.apply());
                QJsonObject stored = opened.device.document();
                QCOMPARE(
                    stored.take(Key::connection).toObject().value(Key::rdpConnection).toObject(),
                    QJsonObject({{Key::rdpServerAddress, "healed"}, {Key::allowCustomRdpServers, false}}));
                QJsonObject others = broken;
                others.remove(Key::connection);
                QCOMPARE(stored, others);
            }
        }
    }

    void greysOutWhatDoesNotCount()
    {
        const Opened opened(m_device);
        const auto enabled = [&opened](const char *name) {
            return opened.part(name)->isEnabled();
        };
        QVERIFY(!enabled("autoConnectGroupComboBox") && !enabled("autoConnectGroupRadioButton"));
        QVERIFY(!enabled("desktopLineEdit"));
        opened.enter("autoConnectCheckBox", "true");
        QVERIFY(enabled("autoConnectGroupComboBox") && !enabled("autoConnectServerAddressLineEdit"));
        opened.enter("autoConnectServerRadioButton", "true");
        QVERIFY(!enabled("autoConnectGroupComboBox") && enabled("autoConnectServerAddressLineEdit"));
        opened.enter("autoLogonCheckBox", "true");
        QVERIFY(enabled("desktopLineEdit"));
    }

    void asksOtherPagesForGroupsAndUser()
    {
        Opened opened(m_device);
        QJsonArray present = groups();
        QString user;
        ConnectionPage page(
            opened.configuration, [&present] { return present; }, [&user] { return user; });
        QSignalSpy chosen(&page, &ConnectionPage::autoConnectGroupChanged);
        page.fill();
        QCOMPARE(chosen.takeLast(), QVariantList{QString()});
        page.findChild<QCheckBox *>("autoConnectCheckBox")->setChecked(true);
        QCOMPARE(chosen.takeLast(), QVariantList{"Office"});
        QVERIFY(page.apply());

        // A group that goes stays chosen, which is no change of this page, and is refused with the next one.
        present.removeFirst();
        page.setGroups(present);
        QVERIFY(!page.isChanged());
        QCOMPARE(page.autoConnectGroup(), "Office");
        const DialogAnswer answer(true);
        page.findChild<QCheckBox *>("autoLogonCheckBox")->setChecked(true);
        QVERIFY(!page.apply());
        page.setGroups(present = groups());
        QVERIFY(!page.apply());
        QCOMPARE(answer.messages.size(), 2);
        QVERIFY(answer.messages.first().contains("group Office does not exist"));
        QVERIFY(answer.messages.last().contains("needs a user"));
        user = "berta";
        QVERIFY(page.apply());
    }

private:
    TestDevice m_device;
};

QTEST_MAIN(ConnectionPageTest)
#include "connectionpagetest.moc"
