// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"
#include "networkpagefixture.h"
#include "testtable.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const char *const dhcpWired = "{'enabled': true, 'type': 'dhcp', 'Ip address': ''}";
const char *const off = "{'enabled': false, 'type': 'dhcp'}";
const char *const fixedAddress
    = "{'enabled': true, 'type': 'static', 'IP address': '10.0.0.5', 'network mask': '255.0.0.0', "
      "'default gateway': '10.0.0.1', 'ssid': 'Ward 3', 'security': 'personal', 'passphrase': 'a key'}";
const char *const ward3 = "{'enabled': true, 'type': 'dhcp', 'ssid': 'Ward 3', 'security': 'personal', "
                          "'passphrase': 'ward3-$(x);', 'encryption': 'ccmp'}";
const char *const enterprise
    = "{'ssid': 'Hospital Staff', 'security': 'enterprise', 'encryption': 'auto', 'advanced security': "
      "'wpa2', 'authentication method': 'peap', 'user name': 'nurse', 'user password': 'staff-password'}";

} // namespace

/// The network page as an administrator uses it.
class NetworkPageTest : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data()
    {
        const TestTable<QByteArray, QByteArray, QByteArray, QString, QString> table("eth", "wlan", "dns",
                                                                                    "edit", "message");
        const QByteArray byDhcp = "{'type': 'dhcp'}";
        const QByteArray bare = "{'type': 'static', 'dns1': '', 'dns2': ''}";
        const QString ethernet = "Fill all ethernet parametrs and try again";
        const QString names = "Fill at least one dns parameter and try again";
        const QString conflict
            = "You have configured the DNS to obtain the configuration form DHCP server, while all enabled "
              "network interfaces\nuse static configuration.\n\nDNS configuration can only be obtained from "
              "DHCP, when Ethernet or WiFi are also configured to use DHCP.";
        const QString touch = "proxyCheckBox";
        table.row("no gateway", fixedAddress, off, bare, "ethernetEditor.gatewayLineEdit=", ethernet);
        table.row("half a mask", fixedAddress, off, bare, "ethernetEditor.maskLineEdit=255.0.",
                  "Ethernet, Network mask: \"255.0.\" cannot be used. Correct it and try again");
        table.row("gateway everywhere", fixedAddress, off, bare, "ethernetEditor.gatewayLineEdit=0.0.0.0",
                  "Ethernet, Default gateway: \"0.0.0.0\" cannot be used. Correct it and try again");
        table.row("no DNS", fixedAddress, off, bare, touch, names);
        table.row("half a DNS", dhcpWired, off, bare, "dns2LineEdit=127.0.0.53",
                  "Second DNS server: \"127.0.0.53\" cannot be used. Correct it and try again");
        table.row("DNS of no lease", fixedAddress, fixedAddress, byDhcp, touch, conflict);
        table.row("wireless alone", off, fixedAddress, byDhcp, touch, conflict);
        table.row("no wireless gateway", dhcpWired, fixedAddress, byDhcp,
                  "wifiEditor.gatewayLineEdit=", "Fill all WiFi parameters and try again");
        table.row("DNS of the other lease", fixedAddress, ward3, byDhcp, touch, {});
        table.row("nothing on", off, off, byDhcp, touch, {});
    }

    void refuses()
    {
        QFETCH(QByteArray, eth);
        QFETCH(QByteArray, wlan);
        QFETCH(QByteArray, dns);
        QFETCH(QString, edit);
        QFETCH(QString, message);
        Opened opened(eth, wlan, dns);
        const QJsonObject before = opened.device.document();
        opened.edit({edit});
        const DialogAnswer answer(true);
        QCOMPARE(opened.page.apply(), message.isEmpty());
        QCOMPARE(answer.messages.join('|'), message);
        QCOMPARE(opened.device.document() == before, !message.isEmpty());
    }

    void tellsTheToolsInOrder_data()
    {
        const TestTable<QByteArray, QByteArray, QStringList, QStringList> table("eth", "wlan", "edits",
                                                                                "calls");
        const QString wired = "kt-network-config connect-ethernet A";
        const QString leave = "kt-network-config disconnect-wifi A";
        table.row("another address", dhcpWired, ward3,
                  {"ethernetEditor.staticRadioButton", "ethernetEditor.addressLineEdit=10.0.0.9"},
                  {wired, "kt-check-gateway"});
        table.row("both switched on", off, off,
                  {"ethernetCheckBox", "wifiCheckBox", "scanButton", "wifiComboBox:2"},
                  {wired, "kt-check-gateway", leave, "kt-check-wifi Visitors '' 0"});
        table.row("both switched off", dhcpWired, ward3, {"ethernetCheckBox", "wifiCheckBox"},
                  {"kt-network-config disconnect-ethernet A", leave});
        table.row("another wireless address", dhcpWired, ward3,
                  {"wifiEditor.staticRadioButton", "wifiEditor.addressLineEdit=10.0.0.9",
                   "wifiEditor.maskLineEdit=255.0.0.0", "wifiEditor.gatewayLineEdit=10.0.0.1"},
                  {leave, "kt-check-wifi 'Ward 3' 'ward3-$(x);' 0"});
        table.row("a hidden network", dhcpWired, ward3, {"hiddenSsidLineEdit=Cellar"},
                  {leave, "kt-check-wifi Cellar '' 1"});
        table.row(
            "an enterprise's network", dhcpWired, enterprise, {"wifiCheckBox"},
            {leave, "kt-enterprise-wifi 'Hospital Staff' nurse peap auto wpa2 0 '' .p12 staff-password ''"});
        table.row("nothing that is connected", dhcpWired, ward3, {"proxyCheckBox"}, {});
    }

    void tellsTheToolsInOrder()
    {
        QFETCH(QByteArray, eth);
        QFETCH(QByteArray, wlan);
        QFETCH(QStringList, edits);
        QFETCH(QStringList, calls);
        Opened opened(eth, wlan);
        opened.device.write("/tmp/dhcp-options.conf", "old");
        opened.edit(edits);
        opened.device.forgetCalls();
        const QSignalSpy joined(&opened.controller, &NetworkController::setWifiStatus);
        const DialogAnswer answer(true);
        QVERIFY2(opened.page.apply(), qPrintable(answer.messages.join('|')));
        const bool joins = !calls.filter(QRegularExpression("^kt-(check|enterprise)-wifi")).isEmpty();
        opened.applier.apply(SettingsSections::Network);
        opened.settle();
        QTRY_COMPARE(joined.count(), joins ? 1 : 0);
        QStringList heard = opened.device.calls().filter(QRegularExpression("^(?!sudo )"));
        QVERIFY(heard.takeFirst().startsWith("kt-network-config set-config A "));
        QCOMPARE(heard, calls);
        // An offer belongs to the network as it was: it goes when one is connected.
        const bool connects = joins || calls.contains("kt-network-config connect-ethernet A");
        QCOMPARE(opened.device.exists("/tmp/dhcp-options.conf"), !connects);
    }

    void readsTheDefaultsCrosswise()
    {
        // As the factory defaults write a static wired interface.
        Opened opened("{'enabled': true, 'type': 'static', 'Ip address': '10.0.0.5', 'network mask': "
                      "'10.0.0.1', 'default gateway': '255.255.255.0'}",
                      off, "{'type': 'static', 'dns1': '10.0.0.2'}");
        QCOMPARE(opened.field<QLineEdit>("ethernetEditor.maskLineEdit")->text(), "255.255.255.0");
        opened.edit({"dns2LineEdit=10.0.0.3"});
        QVERIFY(opened.page.apply());
        QCOMPARE(opened.stored()["interfaces"]["eth"].toObject(),
                 json("{'enabled': true, 'type': 'static', 'IP address': '10.0.0.5', 'network mask': "
                      "'255.255.255.0', 'default gateway': '10.0.0.1'}"));
    }

    void typesAddressesOnly()
    {
        const Opened opened(fixedAddress, off);
        for (const QString row : {"address 10.1.2.3", "address 0.1.2.3 no", "address 127.0.0.1 no",
                                  "address 224.0.0.1 no", "gateway 10.1.2 no", "mask 255.255.254.0",
                                  "mask 255.0.255.0 no", "mask 0.0.0.0 no", "mask 255.255.255.255"}) {
            auto *line
                = opened.field<QLineEdit>(QString("ethernetEditor.%1LineEdit").arg(row.section(' ', 0, 0)));
            line->clear();
            QTest::keyClicks(line, row.section(' ', 1, 1) + "x-");
            QCOMPARE(line->text(), row.section(' ', 1, 1));
            QCOMPARE(line->hasAcceptableInput(), !row.endsWith("no"));
        }
        opened.edit({"ethernetEditor.addressLineEdit=300.010.1.2.3"});
        QCOMPARE(opened.field<QLineEdit>("ethernetEditor.addressLineEdit")->text(), "30.0.1.23");
    }

    void keepsWhatIsConfiguredThroughAScan()
    {
        const Opened opened(dhcpWired, ward3);
        const QComboBox &networks = *opened.networks();
        const auto seesTheKey = [](WpaCredentialDialog &dialog) {
            QCOMPARE(part<QLineEdit>(dialog, "passphraseLineEdit")->text(), "ward3-$(x);");
            dialog.reject();
        };
        opened.scan(R"([{"ssid": "A", "signal strength": 9}, {"ssid": "Ward 3", "authentication": "NONE"}])");
        QCOMPARE(networks.count(), 2);
        for (const char *around : {"[]", R"([{"ssid": "ward 3"}])"}) { // another's name, and it is not there
            QCOMPARE(networks.currentText(), "Ward 3");
            opened.inDialog(seesTheKey);
            opened.scan(around);
        }
        QCOMPARE(networks.count(), 2);
        QVERIFY(!opened.page.isChanged());
        opened.edit({"wifiComboBox:0"}); // no longer chosen, and still known
        opened.scan("[]");
        QCOMPARE(networks.currentText(), "ward 3");
        opened.networks()->setCurrentText("Ward 3");
        opened.inDialog(seesTheKey);
        // A hidden name is a row of its own, and gone when it is taken back.
        opened.edit({"hiddenSsidLineEdit=Cellar"});
        QCOMPARE(networks.currentText(), "Cellar");
        opened.edit({"hiddenSsidLineEdit="});
        QCOMPARE(networks.count(), 2);
        QCOMPARE(networks.currentText(), "Ward 3");
    }

    void completesWhatItShowsWhenTheToolReplies()
    {
        Opened opened(dhcpWired, ward3);
        const auto *address = opened.field<QLineEdit>("ethernetEditor.addressLineEdit");
        QCOMPARE(address->text(), "10.77.0.10");
        opened.device.setState("wired-address", "10.77.0.11");
        opened.page.fill(); // shows at once what is known
        QCOMPARE(address->text(), "10.77.0.10");
        opened.edit({"ethernetEditor.staticRadioButton", "ethernetEditor.addressLineEdit=10.0.0.9"});
        opened.toolsReplied();
        QCOMPARE(address->text(), "10.0.0.9");
        opened.page.fill();
        QTRY_COMPARE(address->text(), "10.77.0.11");
        QVERIFY(!opened.page.isChanged());
        opened.device.setState("wired-address", "10.77.0.12");
        opened.page.fill();
        opened.page.discard(); // the page is left
        opened.toolsReplied();
        QCOMPARE(address->text(), "10.77.0.11");
    }

    void scansBesideTheUser()
    {
        const char *const around
            = R"([{"ssid": "", "signal strength": 90}, {"ssid": "Near", "signal strength": 80},
                 {"ssid": "Far", "signal strength": 20}])";
        Opened opened(dhcpWired, "{'enabled': true}");
        const auto *button = part<QPushButton>(opened.page, "scanButton");
        opened.device.write("/lab/answers/kt-network-config.get-wifi-list", around);
        press(opened.page, "scanButton");
        QVERIFY(!button->isEnabled() && button->text() == "Scanning...");
        opened.page.fill();
        QVERIFY(button->isEnabled() && button->text() == "Scan");
        opened.toolsReplied();
        QCOMPARE(opened.networks()->count(), 0); // that scan was the former filling's
        opened.scan(around);
        QCOMPARE(opened.networks()->currentText(), "Near");
        QVERIFY(opened.page.isChanged());
        opened.inDialog([&](WpaCredentialDialog &dialog) {
            opened.scan(around);
            part<QComboBox>(dialog, "securityComboBox")->setCurrentIndex(WpaCredentialDialog::Personal);
            QTest::keyClicks(part<QLineEdit>(dialog, "passphraseLineEdit"), "a pass phrase");
            dialog.accept();
        });
        QVERIFY(opened.page.apply());
        const QJsonValue wlan = opened.stored()["interfaces"]["wlan"];
        QCOMPARE(wlan["ssid"], QJsonValue("Near"));
        QCOMPARE(wlan["passphrase"], QJsonValue("a pass phrase"));
    }

    void survivesOddScans()
    {
        QByteArray many = "[";
        for (int i = 0; i < 2000; ++i)
            many += i % 3 ? "{'ssid': 'Ward 3', 'signal strength': 50},"
                          : "{'ssid': '', 'signal strength': 50},";
        many.replace('\'', '"');
        many.back() = ']';
        const Opened opened(dhcpWired, ward3);
        const QPair<QByteArray, int> rows[] = {{many, 2000},
                                               {many.left(30000), 1},
                                               {"[1, null, [], \"x\"]", 5},
                                               {R"([{"ssid": 5, "signal strength": "x"}])", 2}};
        for (const auto &[answer, count] : rows) {
            opened.scan(answer);
            QCOMPARE(opened.networks()->currentText(), "Ward 3");
            QCOMPARE(opened.networks()->count(), count);
            QVERIFY(!opened.page.isChanged());
        }
    }

    void asksForCredentials()
    {
        Opened opened(dhcpWired,
                      "{'enabled': true, 'ssid': 'Hospital Staff', 'security': 'enterprise', "
                      "'pkcs12 certificate': 'gone'}");
        opened.device.write("/var/lib/kt964/certificates/cacerts/company.pem", "");
        opened.inDialog([](WpaCredentialDialog &dialog) {
            auto *ok = dialog.findChild<QPushButton *>();
            QVERIFY(!ok->isEnabled());
            QTest::keyClicks(part<QLineEdit>(dialog, "userNameLineEdit"), "nurse");
            auto *password = part<QLineEdit>(dialog, "userPasswordLineEdit");
            QTest::keyClicks(password, "staff-password");
            QVERIFY(ok->isEnabled());
            press(dialog, "showPasswordCheckBox");
            QCOMPARE(password->echoMode(), QLineEdit::Normal);
            auto *authorities = part<QComboBox>(dialog, "caCertificateComboBox");
            authorities->setCurrentIndex(authorities->count() - 1);
            ok->click();
        });
        const QSignalSpy joined(&opened.controller, &NetworkController::setWifiStatus);
        QVERIFY(opened.page.isChanged() && opened.page.apply());
        QJsonObject wlan = opened.stored()["interfaces"]["wlan"].toObject();
        const QJsonObject expected
            = json("{'user name': 'nurse', 'user password': 'staff-password', 'ca certificate': "
                   "'/company.pem', 'pkcs12 certificate': 'gone', 'authentication method': 'peap', "
                   "'advanced security': 'auto', 'security': 'enterprise'}");
        for (const QString &key : expected.keys())
            QCOMPARE(wlan[key], expected[key]);
        QTRY_COMPARE(joined.count(), 1);
    }

    void warnsWithoutANetwork()
    {
        const Opened opened(dhcpWired, off);
        const DialogAnswer answer(true);
        opened.edit({"wifiCheckBox", "editWifiButton"});
        opened.scan(R"([{"ssid": ""}])");
        opened.edit({"wifiComboBox:0", "editWifiButton"});
        QCOMPARE(
            answer.messages,
            QStringList({"Please scan WiFi and try again!", "WiFi SSID is too short, please try again!"}));
    }
};

QTEST_MAIN(NetworkPageTest)
#include "networkpagetest.moc"
