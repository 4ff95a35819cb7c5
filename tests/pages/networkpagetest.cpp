// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatestore.h"
#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "dialoganswer.h"
#include "pages/networkpage.h"
#include "pages/wpacredentialdialog.h"
#include "testdevice.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text).replace('\'', '"')).object();
}

const char *const dhcpWired = "{'enabled': true, 'type': 'dhcp', 'Ip address': ''}";
const char *const off = "{'enabled': false, 'type': 'dhcp'}";
const char *const fixedAddress
    = "{'enabled': true, 'type': 'static', 'IP address': '10.0.0.5', 'network mask': '255.0.0.0', "
      "'default gateway': '10.0.0.1', 'ssid': 'Ward 3', 'security': 'personal', 'passphrase': 'a key'}";
const char *const ward3 = "{'enabled': true, 'type': 'dhcp', 'ssid': 'Ward 3', 'security': 'personal', "
                          "'passphrase': 'ward3-$(x);', 'encryption': 'ccmp'}";

/// Clicks and types: "box" clicks, "line=text" types, "combo:n" chooses.
using Edits = QVector<const char *>;

} // namespace

/// The network page as an administrator uses it, on a device of its own.
class NetworkPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void refusesInOrder();
    void tellsTheToolsInOrder();
    void survivesAnOddTool();
    void storesWhatIsShown();
    void typesAddressesOnly();
    void keepsWhatIsConfiguredThroughAScan();
    void survivesOddScans();
    void asksForCredentials();
    void warnsWithoutANetwork();
    void showsTheFieldsOfEachMode();

private:
    void start(const char *eth, const char *wlan, const char *dns = "{'type': 'dhcp'}");
    void edit(const Edits &edits);
    void scan(const QByteArray &answer);
    void commandsEnded();
    void inDialog(const std::function<void(WpaCredentialDialog *)> &act);
    template <typename Widget>
    Widget *part(const QString &path) const
    {
        const QWidget *from = m_page.get();
        const QStringList names = path.split(QLatin1Char('.'));
        for (const QString &name : names.mid(0, names.size() - 1))
            from = from->findChild<QWidget *>(name);
        return from->findChild<Widget *>(names.last());
    }
    QComboBox *networks() const { return part<QComboBox>("wifiComboBox"); }
    QJsonObject stored(const char *interface) const
    {
        const QJsonObject network = m_device->document().value("network settings").toObject();
        const QJsonObject interfaces = network.value("interfaces").toObject();
        return (interfaces.contains(QLatin1String(interface)) ? interfaces : network)
            .value(QLatin1String(interface))
            .toObject();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<JsonModule> m_document;
    std::unique_ptr<NetworkController> m_network;
    std::unique_ptr<CertificateStore> m_store;
    std::unique_ptr<NetworkPage> m_page;
};

void NetworkPageTest::init()
{
    m_page.reset();
    m_device = std::make_unique<TestDevice>();
    m_document = std::make_unique<JsonModule>("config.json", true);
    m_network = std::make_unique<NetworkController>();
    m_store = std::make_unique<CertificateStore>(*m_document);
}

void NetworkPageTest::start(const char *eth, const char *wlan, const char *dns)
{
    const QJsonObject interfaces{{"eth", json(eth)}, {"wlan", json(wlan)}};
    m_device->setDocument(
        {{"network settings", QJsonObject{{"interfaces", interfaces}, {"DNS", json(dns)}}}});
    m_document->readContent();
    m_page = std::make_unique<NetworkPage>(*m_document, *m_network, *m_store);
    m_page->fill();
    m_page->show();
    m_device->forgetCalls();
}

void NetworkPageTest::edit(const Edits &edits)
{
    for (const QString text : edits) {
        const QString name = text.section(QLatin1Char('='), 0, 0).section(QLatin1Char(':'), 0, 0);
        const QString value = text.section(QLatin1Char('='), 1);
        if (auto *button = part<QAbstractButton>(name)) {
            button->click();
        } else if (auto *line = part<QLineEdit>(name)) {
            line->clear();
            QTest::keyClicks(line, value);
        } else {
            part<QComboBox>(name)->setCurrentIndex(text.section(QLatin1Char(':'), 1).toInt());
        }
    }
}

void NetworkPageTest::commandsEnded()
{
    bool ended = false;
    m_network->afterCommands(this, [&ended] { ended = true; });
    QTRY_VERIFY(ended);
}

void NetworkPageTest::refusesInOrder()
{
    const char *const byDhcp = "{'type': 'dhcp'}";
    const char *const bare = "{'type': 'static', 'dns1': '', 'dns2': ''}";
    const QString ethernet = "Fill all ethernet parametrs and try again";
    const QString names = "Fill at least one dns parameter and try again";
    const QString conflict
        = "You have configured the DNS to obtain the configuration form DHCP server, while all enabled "
          "network interfaces\nuse static configuration.\n\nDNS configuration can only be obtained from "
          "DHCP, when Ethernet or WiFi are also configured to use DHCP.";
    const Edits touch{"proxyCheckBox"};
    const struct
    {
        const char *eth, *wlan, *dns;
        Edits edits;
        QString message;
    } rows[] = {
        {fixedAddress, off, bare, {"ethernetEditor.gatewayLineEdit="}, ethernet},
        {fixedAddress, off, bare, {"ethernetEditor.maskLineEdit=255.0."}, ethernet},
        {fixedAddress, off, bare, touch, names},
        {dhcpWired, off, bare, {"dns1LineEdit=9.9.9.9", "dns2LineEdit=9.9"}, names},
        {fixedAddress, fixedAddress, byDhcp, touch, conflict},
        {off, fixedAddress, byDhcp, touch, conflict},
        {dhcpWired,
         fixedAddress,
         byDhcp,
         {"wifiEditor.gatewayLineEdit="},
         "Fill all WiFi parameters and try again"},
        {fixedAddress, ward3, byDhcp, touch, {}},
        {off, ward3, byDhcp, touch, {}},
        {off, off, byDhcp, touch, {}},
    };
    for (const auto &row : rows) {
        init();
        start(row.eth, row.wlan, row.dns);
        const QJsonObject before = m_device->document();
        edit(row.edits);
        const DialogAnswer answer(true);
        const bool accepted = m_page->apply();
        QCOMPARE(answer.messages.join("|"), row.message);
        QCOMPARE(accepted, row.message.isEmpty());
        QCOMPARE(m_device->document() == before, !row.message.isEmpty());
        // Where it is accepted, nothing that is connected is connected anew.
        commandsEnded();
        QCOMPARE(m_device->calls().size(), row.message.isEmpty() ? 1 : 0);
    }
}

void NetworkPageTest::tellsTheToolsInOrder()
{
    const QString config = "kt-network-config %1 A";
    const QString wired = config.arg("connect-ethernet"), leave = config.arg("disconnect-wifi");
    const struct
    {
        const char *eth, *wlan;
        Edits edits;
        QStringList calls;
        QVariant joined; ///< nothing where no network is joined
    } rows[] = {
        {dhcpWired,
         ward3,
         {"ethernetEditor.staticRadioButton", "ethernetEditor.addressLineEdit=10.0.0.9"},
         {wired, "kt-check-gateway"},
         {}},
        {off,
         off,
         {"ethernetCheckBox", "wifiCheckBox", "scanButton", "wifiComboBox:2"},
         {wired, "kt-check-gateway", leave, "kt-check-wifi Visitors '' 0"},
         true},
        {dhcpWired,
         ward3,
         {"ethernetCheckBox", "wifiCheckBox"},
         {config.arg("disconnect-ethernet"), leave},
         {}},
        {dhcpWired,
         ward3,
         {"wifiEditor.staticRadioButton", "wifiEditor.addressLineEdit=10.0.0.9",
          "wifiEditor.maskLineEdit=255.0.0.0", "wifiEditor.gatewayLineEdit=10.0.0.1"},
         {leave, "kt-check-wifi 'Ward 3' 'ward3-$(x);' 0"},
         false},
        {dhcpWired, ward3, {"hiddenSsidLineEdit=Cellar"}, {leave, "kt-check-wifi Cellar '' 1"}, false},
        {dhcpWired,
         "{'ssid': 'Hospital Staff', 'security': 'enterprise', 'encryption': 'auto', 'advanced security': "
         "'wpa2', 'authentication method': 'peap', 'user name': 'nurse', 'user password': 'staff-password'}",
         {"wifiCheckBox"},
         {leave, "kt-enterprise-wifi 'Hospital Staff' nurse peap auto wpa2 0 '' .p12 staff-password ''"},
         true},
    };
    for (const auto &row : rows) {
        init();
        start(row.eth, row.wlan);
        m_device->write("/tmp/dhcp-options.conf", "old");
        edit(row.edits);
        m_device->forgetCalls();
        QSignalSpy outcome(m_network.get(), &NetworkController::setWifiStatus);
        const DialogAnswer answer(true);
        QVERIFY2(m_page->apply(), qPrintable(answer.messages.join("|")));
        if (row.joined.isValid()) {
            QTRY_COMPARE(outcome.count(), 1);
            QCOMPARE(outcome.first().first(), row.joined);
        }
        commandsEnded();
        QStringList heard = m_device->calls();
        QVERIFY(heard.takeFirst().startsWith("kt-network-config set-config A "));
        QCOMPARE(heard.filter(QRegularExpression("^(?!sudo )")), row.calls);
        QVERIFY(!m_device->exists("/tmp/dhcp-options.conf"));
    }
}

void NetworkPageTest::survivesAnOddTool()
{
    start(dhcpWired,
          "{'enabled': true, 'type': 'dhcp', 'ssid': 'Ward 3', 'hidden ssid': true, 'security': "
          "'personal', 'passphrase': 'ward3-passphrase'}");
    QSignalSpy outcome(m_network.get(), &NetworkController::setWifiStatus);
    for (const char *fault : {"trickle 1", "crash", "exit 3", "garbage", "hang"}) {
        m_device->setFault("kt-check-wifi", fault);
        edit({"wifiCheckBox"});
        QVERIFY(m_page->apply());
        edit({"wifiCheckBox"});
        QVERIFY(m_page->apply()); // does not wait for the tool
        if (qstrcmp(fault, "hang") == 0)
            break;
        QTRY_COMPARE(outcome.count(), 1);
        QCOMPARE(outcome.takeFirst().first().toBool(), qstrcmp(fault, "trickle 1") == 0);
    }
}

void NetworkPageTest::storesWhatIsShown()
{
    // As the factory defaults write a static wired interface.
    start("{'enabled': true, 'type': 'static', 'Ip address': '10.0.0.5', 'network mask': '10.0.0.1', "
          "'default gateway': '255.255.255.0'}",
          off, "{'type': 'static', 'dns1': '10.0.0.2'}");
    QCOMPARE(part<QLineEdit>("ethernetEditor.maskLineEdit")->text(), "255.255.255.0");
    edit({"proxyCheckBox", "proxyAddressLineEdit=proxy.example", "dns2LineEdit=10.0.0.3"});
    part<QSpinBox>("proxyPortSpinBox")->setValue(3128);
    QVERIFY(m_page->apply());
    QCOMPARE(stored("eth"),
             json("{'enabled': true, 'type': 'static', 'IP address': '10.0.0.5', 'network mask': "
                  "'255.255.255.0', 'default gateway': '10.0.0.1'}"));
    QCOMPARE(stored("wlan").value("type").toString(), "off");
    QCOMPARE(stored("DNS"), json("{'type': 'static', 'dns1': '10.0.0.2', 'dns2': '10.0.0.3', 'domain': ''}"));
    QCOMPARE(stored("proxy"),
             json("{'enabled': true, 'address': 'proxy.example', 'port': 3128, 'user name': "
                  "'', 'password': '', 'no proxy for LAN': false}"));
}

void NetworkPageTest::typesAddressesOnly()
{
    start(fixedAddress, off);
    const QPair<const char *, const char *> rows[]
        = {{"address", "10.1.2.3"},     {"address", "0.1.2.3 no"}, {"address", "127.0.0.1 no"},
           {"address", "224.0.0.1 no"}, {"gateway", "10.1.2 no"},  {"mask", "255.255.254.0"},
           {"mask", "255.0.255.0 no"},  {"mask", "0.0.0.0 no"},    {"mask", "255.255.255.255"}};
    for (const auto &row : rows) {
        auto *line = part<QLineEdit>(QString("ethernetEditor.%1LineEdit").arg(row.first));
        const QString text = QLatin1String(row.second);
        line->clear();
        QTest::keyClicks(line, text.section(QLatin1Char(' '), 0, 0) + "x-");
        QCOMPARE(line->text(), text.section(QLatin1Char(' '), 0, 0));
        QCOMPARE(line->hasAcceptableInput(), !text.endsWith("no"));
    }
    auto *line = part<QLineEdit>("ethernetEditor.addressLineEdit");
    line->clear();
    QTest::keyClicks(line, "300.010.1.2.3");
    QCOMPARE(line->text(), "30.0.1.23");
}

void NetworkPageTest::scan(const QByteArray &answer)
{
    m_device->write("/lab/answers/kt-network-config.get-wifi-list", answer);
    part<QPushButton>("scanButton")->click();
}

void NetworkPageTest::keepsWhatIsConfiguredThroughAScan()
{
    const auto seesTheKey = [](WpaCredentialDialog *dialog) {
        QCOMPARE(dialog->findChild<QLineEdit *>("passphraseLineEdit")->text(), "ward3-$(x);");
        dialog->reject();
    };
    start(dhcpWired, ward3);
    QCOMPARE(networks()->currentText(), "Ward 3");
    scan(R"([{"ssid": "A", "signal strength": 9}, {"ssid": "Ward 3", "authentication": "NONE"}])");
    QCOMPARE(networks()->count(), 2);
    for (const char *around : {"[]", R"([{"ssid": "ward 3"}])"}) { // another's name, and it is not there
        QCOMPARE(networks()->currentText(), "Ward 3");
        inDialog(seesTheKey);
        scan(around);
    }
    QCOMPARE(networks()->count(), 2);
    QVERIFY(!m_page->isChanged());
    edit({"wifiComboBox:0"}); // no longer chosen, and still known
    scan("[]");
    QCOMPARE(networks()->currentText(), "ward 3");
    networks()->setCurrentText("Ward 3");
    inDialog(seesTheKey);
    // A hidden name is a row of its own, and gone when it is taken back.
    edit({"hiddenSsidLineEdit=Cellar"});
    QCOMPARE(networks()->currentText(), "Cellar");
    edit({"hiddenSsidLineEdit="});
    QCOMPARE(networks()->count(), 2);
    QCOMPARE(networks()->currentText(), "Ward 3");
}

void NetworkPageTest::survivesOddScans()
{
    QByteArray many = "[";
    for (int i = 0; i < 2000; ++i)
        many += QByteArray(R"({"ssid": ")") + (i % 3 ? "Ward 3" : "") + R"(", "signal strength": 50},)";
    many.back() = ']';
    const QPair<QByteArray, int> rows[] = {{many, 2000},
                                           {many.left(30000), 1},
                                           {"[1, null, [], \"x\"]", 5},
                                           {R"([{"ssid": 5, "signal strength": "x"}])", 2},
                                           {"[{\"ssid\": \"K\xc3\"}]", -1}}; // read or left out
    for (const auto &[answer, count] : rows) {
        start(dhcpWired, ward3);
        scan(answer);
        QCOMPARE(networks()->currentText(), "Ward 3");
        QVERIFY(count < 0 || networks()->count() == count);
        QVERIFY(!m_page->isChanged());
    }
}

void NetworkPageTest::inDialog(const std::function<void(WpaCredentialDialog *)> &act)
{
    bool seen = false;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<WpaCredentialDialog *>(QApplication::activeModalWidget());
        seen = dialog;
        if (dialog)
            act(dialog);
    });
    part<QPushButton>("editWifiButton")->click();
    QVERIFY(seen);
}

void NetworkPageTest::asksForCredentials()
{
    m_device->write("/var/lib/kt964/certificates/cacerts/company.pem", "");
    start(dhcpWired,
          "{'enabled': true, 'ssid': 'Hospital Staff', 'security': 'enterprise', 'pkcs12 certificate': "
          "'gone'}");
    inDialog([](WpaCredentialDialog *dialog) {
        const auto field = [dialog](const char *name) {
            return dialog->findChild<QLineEdit *>(QLatin1String(name));
        };
        auto *ok = dialog->findChild<QPushButton *>(QString(), Qt::FindChildrenRecursively);
        QVERIFY(!ok->isEnabled());
        QTest::keyClicks(field("userNameLineEdit"), "nurse");
        QTest::keyClicks(field("userPasswordLineEdit"), "staff-password");
        QVERIFY(ok->isEnabled());
        dialog->findChild<QCheckBox *>("showPasswordCheckBox")->click();
        QCOMPARE(field("userPasswordLineEdit")->echoMode(), QLineEdit::Normal);
        auto *authorities = dialog->findChild<QComboBox *>("caCertificateComboBox");
        authorities->setCurrentIndex(authorities->count() - 1);
        ok->click();
    });
    QVERIFY(m_page->isChanged());
    QVERIFY(m_page->apply());
    const QJsonObject wlan = stored("wlan");
    const QPair<const char *, const char *> expected[] = {{"user name", "nurse"},
                                                          {"user password", "staff-password"},
                                                          {"ca certificate", "/company.pem"},
                                                          {"pkcs12 certificate", "gone"},
                                                          {"authentication method", "peap"},
                                                          {"advanced security", "auto"},
                                                          {"security", "enterprise"}};
    for (const auto &[key, value] : expected)
        QCOMPARE(wlan.value(QLatin1String(key)).toString(), QLatin1String(value));
    QSignalSpy outcome(m_network.get(), &NetworkController::setWifiStatus);
    QTRY_COMPARE(outcome.count(), 1);
}

void NetworkPageTest::warnsWithoutANetwork()
{
    start(dhcpWired, off);
    edit({"wifiCheckBox"});
    part<QCheckBox>("wifiCheckBox")->setFocus();
    QTest::keyClick(m_page->window()->focusWidget(), Qt::Key_Tab);
    QCOMPARE(m_page->window()->focusWidget(), networks());
    const DialogAnswer answer(true);
    edit({"editWifiButton"});
    scan(R"([{"ssid": ""}])");
    edit({"wifiComboBox:0", "editWifiButton"});
    QCOMPARE(answer.titles, QStringList({"Warning", "Warning"}));
    QCOMPARE(answer.messages,
             QStringList({"Please scan WiFi and try again!", "WiFi SSID is too short, please try again!"}));
}

void NetworkPageTest::showsTheFieldsOfEachMode()
{
    WpaCredentialDialog dialog(*m_store);
    dialog.setCredentialSsid("A \"b\"");
    QCOMPARE(dialog.windowTitle(), "\t\t\t \"A \"b\"\" WiFi network configuration");
    dialog.show();
    const auto shown = [&dialog] {
        QStringList names;
        for (const char *name : {"encryptionComboBox", "passphraseLineEdit", "caCertificateComboBox",
                                 "userPasswordLineEdit", "keyPasswordLineEdit"}) {
            if (dialog.findChild<QWidget *>(QLatin1String(name))->isVisible())
                names += QLatin1String(name).left(3);
        }
        return names.join(QLatin1Char(' '));
    };
    QCOMPARE(shown(), QString());
    auto *security = dialog.findChild<QComboBox *>("securityComboBox");
    auto *method = dialog.findChild<QComboBox *>("authenticationComboBox");
    security->setCurrentIndex(WpaCredentialDialog::Personal);
    QCOMPARE(shown(), "enc pas");
    security->setCurrentIndex(WpaCredentialDialog::Enterprise);
    for (const char *fields : {"enc caC use", "enc caC use", "enc caC key"}) {
        QCOMPARE(shown(), QLatin1String(fields));
        method->setCurrentIndex(method->currentIndex() + 1);
    }
    QCOMPARE(method->count(), 3);
}

QTEST_MAIN(NetworkPageTest)
#include "networkpagetest.moc"
