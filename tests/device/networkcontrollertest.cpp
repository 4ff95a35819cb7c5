// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/networkcontroller.h"
#include "testdevice.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

const QString configTool = QStringLiteral("kt-network-config");
const QString answers = QStringLiteral("/lab/answers/kt-network-config");

using Command = void (NetworkController::*)();
using Question = bool (NetworkController::*)();

QStringList list(std::initializer_list<const char *> words)
{
    QStringList result;
    for (const char *word : words)
        result += QString::fromUtf8(word);
    return result;
}

} // namespace

Q_DECLARE_METATYPE(Command)

/// What the network tools are told, and how what they say is read.
class NetworkControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void runsOneCommandLine_data();
    void runsOneCommandLine();
    void setsAnAddress();
    void takesTheBareWordForTrue_data();
    void takesTheBareWordForTrue();
    void readsTheInterface();
    void readsTheAccessPoint();
    void readsNothingFromABrokenTool_data();
    void readsNothingFromABrokenTool();
    void takesTheFirstRouteAsGateway();
    void readsTwoNameServers();
    void mapsAndSortsTheScan();
    void handsCredentialsToTheTool();
    void tellsOnceHowAJoinWent_data();
    void tellsOnceHowAJoinWent();
    void hearsTheLateWordsOfAnEarlierJoin();

private:
    void answer(const char *subCommand, const QByteArray &text)
    {
        m_device->write(answers + QLatin1Char('.') + QLatin1String(subCommand), text);
    }

    std::unique_ptr<TestDevice> m_device;
};

void NetworkControllerTest::init()
{
    m_device = std::make_unique<TestDevice>();
    QVERIFY(m_device->isValid());
}

void NetworkControllerTest::cleanup()
{
    m_device.reset();
}

void NetworkControllerTest::runsOneCommandLine_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<QStringList>("calls");
    const auto row = [](const char *name, Command command, std::initializer_list<const char *> calls) {
        QTest::newRow(name) << command << list(calls);
    };
    row("setNetworkConfig", &NetworkController::setNetworkConfig,
        {"kt-network-config set-config A ROOT/var/lib/kt964/config.json"});
    row("autoconnect", &NetworkController::autoconnect,
        {"kt-network-config autoconnect A ROOT/var/lib/kt964/config.json"});
    row("connectWired", &NetworkController::connectWired, {"kt-network-config connect-ethernet A"});
    row("disableWired", &NetworkController::disableWiredInterface, {"kt-network-config turn-off-wired A"});
    row("enableWired", &NetworkController::enableWiredInterface, {"kt-network-config turn-on-wired A"});
    row("disconnect", &NetworkController::disconnect, {"kt-network-config disconnect-ethernet A"});
    row("disconnectWifi", &NetworkController::disconnectWifi,
        {"sudo ROOT/usr/bin/kt-network-config disconnect-wifi A", "kt-network-config disconnect-wifi A"});
    row("setRoutingTable", &NetworkController::setRoutingTable,
        {"sudo ROOT/usr/bin/kt-check-gateway", "kt-check-gateway"});
}

void NetworkControllerTest::runsOneCommandLine()
{
    QFETCH(const Command, command);
    QFETCH(QStringList, calls);
    calls.replaceInStrings(QStringLiteral("ROOT"), m_device->path(QString()));
    NetworkController network;
    (network.*command)();
    QCOMPARE(m_device->calls(), calls);
}

void NetworkControllerTest::setsAnAddress()
{
    const QString eth0 = QStringLiteral("eth0");
    const QString address = QStringLiteral("10.77.0.10");
    NetworkController network;
    network.setIpConfigure(eth0, address, 24, false, QString());
    network.setIpConfigure(eth0, address, 24, true, QStringLiteral("10.77.0.255"));
    network.setIpConfigure(eth0, QStringLiteral("1; reboot"), 24, true, QStringLiteral("$(reboot)"));
    QCOMPARE(m_device->calls(QStringLiteral("kt-ip-settings")),
             list({"kt-ip-settings -d eth0 10.77.0.10 24", "kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255",
                   "kt-ip-settings -a eth0 '1; reboot' 24 '$(reboot)'"}));
    QCOMPARE(m_device->calls(QStringLiteral("sudo")).size(), 3);
}

void NetworkControllerTest::takesTheBareWordForTrue_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<bool>("expected");
    for (const char *output : {"true\n", "true", "\ntrue\n\n"})
        QTest::newRow(output) << QByteArray(output) << true;
    for (const char *output : {"True\n", "true \n", "true\r\n", "yes\n", "1\n", "\n", "truetrue", "false\n"})
        QTest::newRow(output) << QByteArray(output) << false;
}

void NetworkControllerTest::takesTheBareWordForTrue()
{
    QFETCH(const QByteArray, output);
    QFETCH(const bool, expected);
    m_device->write(answers, output);
    NetworkController network;
    for (const Question question :
         {&NetworkController::CheckWiredPlugged, &NetworkController::isWiredUp,
          &NetworkController::isWifiConnected, &NetworkController::isEthernetConnected})
        QCOMPARE((network.*question)(), expected);
    QCOMPARE(m_device->calls(),
             list({"kt-network-config is-wired-linked A", "kt-network-config is-wired-on A",
                   "kt-network-config is-wireless-connected A", "kt-network-config is-wired-connected A"}));
    m_device->forgetCalls();
    network.limitQueries(0);
    NetworkProperty property;
    QVERIFY(!network.isWiredUp() && network.getNetworkByInterface(QStringLiteral("eth0"), property));
    QCOMPARE(m_device->calls(), QStringList());
}

void NetworkControllerTest::readsTheInterface()
{
    NetworkController network;
    NetworkProperty property;
    property.setIp(QStringLiteral("kept"));
    QVERIFY(!network.getNetworkByInterface(QStringLiteral("eth1"), property));
    QCOMPARE(property.ip(), QStringLiteral("kept"));
    QCOMPARE(m_device->calls(), QStringList());

    answer("get-wlan0-parameters",
           R"({"values": {"ip address": "10.1.0.7", "gateway address": "from the tool",
                                                  "netmask address": "255.255.0.0", "type": "static"}})");
    m_device->write(QStringLiteral("/etc/resolv.conf"), "search ward.example\nnameserver\t10.1.0.2\r\n");
    QVERIFY(network.getNetworkByInterface(QStringLiteral("wlan0"), property));
    QCOMPARE(property.ip(), QStringLiteral("10.1.0.7"));
    QCOMPARE(property.netmask(), QStringLiteral("255.255.0.0"));
    QCOMPARE(property.typeIp(), QStringLiteral("static"));
    QCOMPARE(property.gateway(), QStringLiteral("10.77.0.1")); // the routing table's
    QCOMPARE(property.dns1(), QStringLiteral("10.1.0.2"));
    QCOMPARE(m_device->calls(), list({"kt-network-config get-wlan0-parameters A", "route -n"}));
}

void NetworkControllerTest::readsTheAccessPoint()
{
    NetworkController network;
    NetworkProperty property;
    answer("check-wireless-point",
           R"({"values": {"status": "true", "ssid": "Zo\u00eb", "signal strength": "71"}})");
    QVERIFY(network.getActualWifi(property));
    QCOMPARE(property.essid(), QStringLiteral("Zo\u00eb"));
    QCOMPARE(property.signalQuality(), QStringLiteral("71"));
    answer("check-wireless-point", R"({"values": {"status": "unsure", "ssid": "x"}})");
    QVERIFY(!network.getActualWifi(property));
    QCOMPARE(property.essid(), QStringLiteral("Zo\u00eb"));
    answer("check-wireless-point", R"({"values": {"status": "false", "ssid": "x"}})");
    QVERIFY(!network.getActualWifi(property));
    QCOMPARE(property.essid(), QString());
}

void NetworkControllerTest::readsNothingFromABrokenTool_data()
{
    QTest::addColumn<QString>("fault");
    for (const char *fault : {"missing", "garbage", "crash", "exit 1", "flood"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void NetworkControllerTest::readsNothingFromABrokenTool()
{
    QFETCH(const QString, fault);
    if (fault == QLatin1String("missing"))
        m_device->removeTool(QStringLiteral("/usr/bin/kt-network-config"));
    else
        m_device->setFault(configTool, fault);
    m_device->write(QStringLiteral("/etc/resolv.conf"), QByteArray());
    m_device->setTool(QStringLiteral("/usr/bin/route"), "exit 1");
    NetworkController network;
    NetworkProperty property;
    property.setIp(QStringLiteral("old"));
    property.setGateway(QStringLiteral("old"));
    QVERIFY(!network.isEthernetConnected());
    QVERIFY(!network.getActualWifi(property));
    QVERIFY(network.getNetworkByInterface(QStringLiteral("eth0"), property));
    QCOMPARE(property.ip() + property.gateway() + property.netmask() + property.typeIp() + property.dns1(),
             QString());
    QList<WifiItem> scan;
    network.GetWifiNetworkList(scan);
    QVERIFY(scan.isEmpty());
}

void NetworkControllerTest::takesTheFirstRouteAsGateway()
{
    const QString heading = QStringLiteral("Kernel IP routing table\nDestination Gateway Genmask\n");
    const auto gateway = [](const QString &routes) {
        return NetworkController::gatewayFromRoutes(routes);
    };
    QCOMPARE(gateway(heading + QStringLiteral("0.0.0.0   10.0.0.1 \t 0.0.0.0 UG\n10.0.0.0 0.0.0.0\n")),
             QStringLiteral("10.0.0.1"));
    QCOMPARE(gateway(heading + QStringLiteral("10.8.0.0 10.0.0.9 255.0.0.0\n")), QStringLiteral("10.0.0.9"));
    QCOMPARE(gateway(heading + QStringLiteral("0.0.0.0\n0.0.0.0 10.0.0.1\n")), QString());
    QCOMPARE(gateway(heading), QString());
    QCOMPARE(gateway(QStringLiteral("a b\nc d")), QString());
}

void NetworkControllerTest::readsTwoNameServers()
{
    const auto servers = [](const char *file) {
        NetworkProperty property;
        property.setDns2(QStringLiteral("old"));
        NetworkController::readNameServers(file, property);
        return property.dns1() + QLatin1Char(' ') + property.dns2();
    };
    QCOMPARE(servers("nameserver 10.0.0.1\nnameserver\t10.0.0.2\nnameserver 10.0.0.3\n"),
             QStringLiteral("10.0.0.1 10.0.0.2"));
    QCOMPARE(servers("search nameserver x\noptions a\nnameserver 10.0.0.1"), QStringLiteral("10.0.0.1 "));
    QCOMPARE(servers("nameserver 10.0.0.1\r\n\r\nnameserver 10.0.0.2 # b\r\n"),
             QStringLiteral("10.0.0.1 10.0.0.2"));
    QCOMPARE(servers(""), QStringLiteral(" "));
}

void NetworkControllerTest::mapsAndSortsTheScan()
{
    answer("get-wifi-list", R"([
        {"ssid": "weak", "pairwise": "TKIP", "authentication": "PSK", "signal strength": 5},
        {"ssid": "strong", "pairwise": "CCMP", "authentication": "NONE", "signal strength": 99},
        {"ssid": "", "pairwise": "TKIP CCMP", "authentication": "802.1x", "signal strength": 50},
        {"ssid": "strong", "pairwise": "CCMP TKIP", "authentication": "SAE", "signal strength": 40}])");
    NetworkController network;
    QList<WifiItem> scan;
    network.GetWifiNetworkList(scan);
    QStringList rows;
    for (const WifiItem &item : qAsConst(scan)) {
        rows += QStringLiteral("%1|%2|%3|%4")
                    .arg(item.essid(), item.encrypt, item.security)
                    .arg(item.signalStrength);
        QVERIFY(!item.hidden);
    }
    QCOMPARE(rows,
             list({"strong|ccmp|open|99", "|auto|enterprise|50", "strong|||40", "weak|tkip|personal|5"}));
}

void NetworkControllerTest::handsCredentialsToTheTool()
{
    NetworkController network;
    const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
    QVERIFY(!network.connectToWifi(QStringLiteral("My; $(net)"), QString(), true));
    QTRY_COMPARE(ended.size(), 1);

    WifiItem item(QStringLiteral("Staff"));
    item.userName = QStringLiteral("nurse");
    item.authenticationMethod = QStringLiteral("peap");
    item.encrypt = QStringLiteral("auto");
    item.advancedSecurity = QStringLiteral("wpa2");
    item.userPassword = QStringLiteral("it's");
    item.clientCertPassword = QStringLiteral("last");
    QVERIFY(!network.connectToWifi(item));
    QTRY_COMPARE(ended.size(), 2);
    item.hidden = true;
    item.caCert = QStringLiteral("/ca.pem");
    item.clientCert = QStringLiteral("/me");
    network.connectToWifi(item);
    QTRY_COMPARE(ended.size(), 3);
    const QString store = m_device->path(QStringLiteral("/var/lib/kt964/certificates/cacerts/ca.pem"));
    QCOMPARE(m_device->calls(),
             list({"kt-check-wifi 'My; $(net)' '' 1",
                   "kt-enterprise-wifi Staff nurse peap auto wpa2 0 '' .p12 'it'\\''s' last"})
                 + QStringList(QStringLiteral("kt-enterprise-wifi Staff nurse peap auto wpa2 1 %1 /me.p12 "
                                              "'it'\\''s' last")
                                   .arg(store)));
}

void NetworkControllerTest::tellsOnceHowAJoinWent_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("result");
    QTest::newRow("missing") << QByteArray() << 0;
    QTest::newRow("connected") << QByteArray("echo associating; echo connected") << 2;
    QTest::newRow("without line end") << QByteArray("printf connected") << 2;
    QTest::newRow("last word counts")
        << QByteArray("echo connected; echo; echo incorrect key; echo other") << 1;
    QTest::newRow("certificate") << QByteArray("echo certificate verification failed") << 3;
    QTest::newRow("no word") << QByteArray("echo Connected; echo ' connected'; echo connected >&2") << 0;
    QTest::newRow("crash") << QByteArray("echo incorrect key; kill -SEGV $$") << 1;
    QTest::newRow("flood") << QByteArray("head -c 3000000 /dev/zero; echo; echo connected") << 2;
}

void NetworkControllerTest::tellsOnceHowAJoinWent()
{
    QFETCH(const QByteArray, script);
    QFETCH(const int, result);
    m_device->removeTool(QStringLiteral("/usr/bin/kt-check-wifi"));
    if (!script.isEmpty())
        m_device->setTool(QStringLiteral("/usr/bin/kt-check-wifi"), script);
    NetworkController network;
    const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
    network.connectToWifi(QStringLiteral("a"), QStringLiteral("b"), false);
    QTRY_COMPARE(network.findChildren<QProcess *>().size(), 0);
    QCOMPARE(ended.size(), 1);
    QCOMPARE(ended.at(0).at(0).toBool(), result == NetworkController::Connected);
    QCOMPARE(static_cast<int>(network.wifiResult()), result);
}

void NetworkControllerTest::hearsTheLateWordsOfAnEarlierJoin()
{
    m_device->setTool(QStringLiteral("/usr/bin/kt-check-wifi"),
                      "if [ $1 = second ]; then echo incorrect key; exit; fi\n"
                      "until [ -e $KT_DEVICE_ROOT/tmp/go ]; do sleep 0.01; done; echo connected");
    NetworkController network;
    const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
    network.connectToWifi(QStringLiteral("first"), QString(), false);
    network.connectToWifi(QStringLiteral("second"), QString(), false);
    QTRY_COMPARE(ended.size(), 1);
    QCOMPARE(network.wifiResult(), NetworkController::IncorrectKey);
    m_device->write(QStringLiteral("/tmp/go"), QByteArray());
    QTRY_COMPARE(ended.size(), 2);
    QCOMPARE(ended.at(1).at(0).toBool(), true);
    QCOMPARE(network.wifiResult(), NetworkController::Connected);

    // A join that is under way ends with its controller.
    m_device->setTool(QStringLiteral("/usr/bin/kt-check-wifi"), "exec sleep 600");
    NetworkController shortLived;
    shortLived.connectToWifi(QStringLiteral("a"), QString(), false);
}

QTEST_GUILESS_MAIN(NetworkControllerTest)
#include "networkcontrollertest.moc"
