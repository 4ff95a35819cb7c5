// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
QByteArray document(const QByteArray &eth, const QByteArray &wlan = "{}", const QByteArray &dns = "{}")
{
    return R"({"general settings": {"device name": "Ward 3's"}, "network settings": {"interfaces": {"eth": )"
        + eth + R"(, "wlan": )" + wlan + R"(}, "DNS": )" + dns + "}}";
}

QStringList values(const LabDevice &device, const char *query, const QVector<const char *> &keys)
{
    const QJsonDocument answer = QJsonDocument::fromJson(device.networkAnswer(query));
    const QJsonObject found = answer.object().value(QLatin1String("values")).toObject();
    QStringList words;
    for (const char *key : keys)
        words << found.value(QLatin1String(key)).toString();
    return words;
}

// "type address netmask gateway", as the tool tells it.
QString addressing(const LabDevice &device, const char *query)
{
    return values(device, query, {"type", "ip address", "netmask address", "gateway address"})
        .join(QLatin1Char(' '));
}

// The second column of the routing table, where the program looks for the gateway.
QString gateways(const LabDevice &device)
{
    const QString table = QString::fromUtf8(device.call("route -n").output);
    QStringList column;
    for (const QString &line : table.split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2))
        column << line.simplified().section(QLatin1Char(' '), 1, 1);
    return column.join(QLatin1Char(' '));
}
} // namespace

// The stand-ins for the device's tools, through the real program: what one call changes, another one answers.
class StandInsTest : public QObject
{
    Q_OBJECT

private slots:
    void wiredConnection_data();
    void wiredConnection();
    void cableDecidesAboutConnecting();
    void unusableDocumentChangesNothing();
    void addressToolAndRoutes();
    void wifi_data();
    void wifi();
    void associationWithoutAddress();
    void autoconnect();
    void scanKeepsSecrets();
    void hostNames();
    void displayModes();
    void sudoRunsStandInsOnly();
    void pkillReachesThisDeviceOnly();
    void rootIsKept();
    void documentIsChanged();
    void usbDevicesComeAndGo();
};

void StandInsTest::wiredConnection_data()
{
    QTest::addColumn<QByteArray>("eth");
    QTest::addColumn<QString>("answer");
    const QByteArray rest = R"(, "network mask": "255.255.0.0", "default gateway": "10.0.0.1"})";
    const QByteArray off = R"({"enabled": false, "type": "off"})";
    const QByteArray noMask = R"({"enabled": true, "type": "static", "IP address": "10.0.0.5"})";
    const QByteArray dhcp = R"({"enabled": true, "type": "dhcp", "IP address": "")" + rest;
    const QByteArray upper = R"({"enabled": true, "type": "static", "IP address": "10.0.0.5")" + rest;
    const QByteArray lower = R"({"enabled": true, "type": "static", "Ip address": "10.0.0.5")" + rest;
    QTest::newRow("dhcp") << dhcp << QStringLiteral("dhcp 10.77.0.10 255.255.255.0 10.77.0.1");
    QTest::newRow("static") << upper << QStringLiteral("static 10.0.0.5 255.255.0.0 10.0.0.1");
    QTest::newRow("static, other key") << lower << QStringLiteral("static 10.0.0.5 255.255.0.0 10.0.0.1");
    QTest::newRow("off") << off << QStringLiteral("dhcp   ");
    QTest::newRow("static, no mask") << noMask << QStringLiteral("dhcp   ");
}

void StandInsTest::wiredConnection()
{
    QFETCH(QByteArray, eth);
    QFETCH(QString, answer);
    const bool connects = !answer.endsWith(QLatin1Char(' '));
    const LabDevice device;
    device.write(documentPath, document(eth));
    QVERIFY(device.networkConfig("set-config"));
    QCOMPARE(device.networkConfig("connect-ethernet"), connects);
    QCOMPARE(addressing(device, "get-eth0-parameters"), answer);
    QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray(connects ? "true" : "false"));
}

void StandInsTest::cableDecidesAboutConnecting()
{
    const LabDevice device;
    QCOMPARE(device.lab("cable unplug").status, 0);
    QCOMPARE(device.networkAnswer("is-wired-linked"), QByteArray("false"));
    // The address outlives the cable until the program takes it away.
    QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray("true"));

    QVERIFY(device.networkConfig("turn-off-wired"));
    QCOMPARE(device.networkAnswer("is-wired-on"), QByteArray("false"));
    QVERIFY(!device.networkConfig("connect-ethernet"));
    QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray("false"));

    QCOMPARE(device.lab("cable plug").status, 0);
    QVERIFY(device.networkConfig("connect-ethernet"));
    QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray("true"));
}

void StandInsTest::unusableDocumentChangesNothing()
{
    const LabDevice device;
    device.write(documentPath,
                 document("{}", "{}",
                          R"({"type": "static", "dns1": "10.0.0.2", "dns2": "10.0.0.3", "domain": "lan"})"));
    QVERIFY(device.networkConfig("set-config"));
    const QByteArray stored = device.read("lab/state/network.json");
    QVERIFY(stored.contains("10.0.0.3"));

    for (const char *content : {"", "{\"network settings\"", "[]", "{\"network settings\": 7}"}) {
        device.write(documentPath, content);
        QVERIFY(!device.networkConfig("set-config"));
        QCOMPARE(device.read("lab/state/network.json"), stored);
        QCOMPARE(device.read("etc/resolv.conf"),
                 QByteArray("search lan\nnameserver 10.0.0.2\nnameserver 10.0.0.3\n"));
    }
}

void StandInsTest::addressToolAndRoutes()
{
    const LabDevice device;
    QCOMPARE(gateways(device), QStringLiteral("10.77.0.1 0.0.0.0"));
    QCOMPARE(device.call("kt-ip-settings -d eth0 10.77.0.10 24").status, 0);
    QCOMPARE(gateways(device), QString());
    QCOMPARE(device.call("kt-ip-settings -d eth0 10.77.0.10 24").status, 1);
    QCOMPARE(device.call("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255").status, 0);
    // The route to everywhere comes back only when the gateway is checked.
    QCOMPARE(gateways(device), QStringLiteral("0.0.0.0"));
    QCOMPARE(device.call("kt-check-gateway").status, 0);
    QCOMPARE(gateways(device), QStringLiteral("10.77.0.1 0.0.0.0"));
    for (const char *wrong :
         {"-a eth0", "-a eth1 10.0.0.5 24", "-a eth0 10.0.0.5 33", "-a eth0 x 24", "-x eth0 10.0.0.5 24"})
        QCOMPARE(device.call("kt-ip-settings", QString::fromLatin1(wrong).split(QLatin1Char(' '))).status, 2);
}

void StandInsTest::wifi_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<QByteArray>("verdict");
    const QByteArray connected("connected");
    const QByteArray wrongKey("incorrect key");
    const QByteArray wrongCertificate("certificate verification failed");
    const auto row = [](const char *name, const QByteArray &call, const QByteArray &verdict) {
        QTest::newRow(name) << call << verdict;
    };
    row("right key", R"(kt-check-wifi "Ward 3" ward3-passphrase 0)", connected);
    row("wrong key", R"(kt-check-wifi "Ward 3" ward3 0)", wrongKey);
    row("open", R"(kt-check-wifi Visitors '' 0)", connected);
    row("hidden", "kt-check-wifi Basement basement-passphrase 1", connected);
    row("hidden, sought as shown", "kt-check-wifi Basement basement-passphrase 0", "network not found");

    const QByteArray staff = R"(kt-enterprise-wifi "Hospital Staff" nurse )";
    const QByteArray known = " auto auto 0 /var/lib/kt964/certificates/cacerts/hospital-ca.pem ";
    const QByteArray other = " auto auto 0 /var/lib/kt964/certificates/cacerts/other.pem ";
    row("password", staff + "peap" + known + R"(.p12 staff-password '')", connected);
    row("unchecked server", staff + R"(peap auto auto 0 '' .p12 staff-password '')", connected);
    row("wrong password", staff + "peap" + known + R"(.p12 x '')", wrongKey);
    row("other CA", staff + "peap" + other + R"(.p12 staff-password '')", wrongCertificate);
    row("certificate", staff + "tls" + known + R"(/tmp/me.p12 '' '')", connected);
    row("stored certificate", staff + "tls" + known + R"(mine.p12 '' '')", connected);
    row("no certificate", staff + "tls" + known + R"(.p12 '' '')", wrongCertificate);
}

void StandInsTest::wifi()
{
    QFETCH(QByteArray, call);
    QFETCH(QByteArray, verdict);
    const LabDevice device;
    for (const char *file : {"var/lib/kt964/certificates/cacerts/hospital-ca.pem",
                             "var/lib/kt964/certificates/cacerts/other.pem", "tmp/me.p12",
                             "var/lib/kt964/certificates/mine.p12"})
        device.write(file, "certificate");
    QCOMPARE(device.call(call.constData()).output.split('\n').value(1), verdict);

    const bool connected = verdict == "connected";
    QCOMPARE(device.networkAnswer("is-wireless-connected"), QByteArray(connected ? "true" : "false"));
    const QStringList point = values(device, "check-wireless-point", {"status", "ssid", "signal strength"});
    QCOMPARE(point.at(0), connected ? QStringLiteral("true") : QStringLiteral("false"));
    QCOMPARE(call.contains(point.at(1).toUtf8()) && point.at(2).toInt() > 0, connected);
}

void StandInsTest::associationWithoutAddress()
{
    const LabDevice device;
    QCOMPARE(device.lab("wifi associate Visitors --no-address").status, 0);
    QCOMPARE(device.networkAnswer("is-wireless-connected"), QByteArray("false"));
    QCOMPARE(values(device, "check-wireless-point", {"ssid"}), QStringList(QStringLiteral("Visitors")));
}

void StandInsTest::autoconnect()
{
    const LabDevice device;
    device.write(
        documentPath,
        document(R"({"enabled": true, "type": "off"})",
                 R"({"enabled": true, "type": "static", "IP address": "10.1.0.7", "network mask": "255.0.0.0",
                              "default gateway": "10.1.0.1", "ssid": "Ward 3", "passphrase": "ward3-passphrase"})"));
    QVERIFY(device.networkConfig("disconnect-ethernet"));
    QVERIFY(device.networkConfig("autoconnect"));
    QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray("false"));
    QCOMPARE(addressing(device, "get-wlan0-parameters"),
             QStringLiteral("static 10.1.0.7 255.0.0.0 10.1.0.1"));
    QCOMPARE(gateways(device), QStringLiteral("10.1.0.1 0.0.0.0"));
    QCOMPARE(device.call("sudo kt-network-config disconnect-wifi A").status, 0);
    QCOMPARE(gateways(device), QString());
}

void StandInsTest::scanKeepsSecrets()
{
    const LabDevice device;
    const QByteArray scan = device.networkAnswer("get-wifi-list");
    const QJsonArray networks = QJsonDocument::fromJson(scan).array();
    QVERIFY(networks.size() >= 4);
    QVERIFY(networks.at(0).toObject().value(QLatin1String("signal strength")).isDouble());
    for (const char *secret : {"passphrase", "Basement", "staff-password", "hospital-ca"})
        QVERIFY2(!scan.contains(secret), secret);
}

void StandInsTest::hostNames()
{
    const LabDevice device;
    const QByteArray original = device.call("hostname").output;
    device.write(documentPath, document("{}"));
    QCOMPARE(device.call("kt-set-hostname -j").status, 0);
    QCOMPARE(device.call("hostname").output, QByteArray("Ward 3's\n"));
    QCOMPARE(device.call("kt-set-hostname -r").status, 0);
    QCOMPARE(device.call("hostname").output, original);
}

void StandInsTest::displayModes()
{
    const LabDevice device;
    QCOMPARE(device.call("kt-set-resolution DMT 58").status, 0);
    QCOMPARE(device.call("kt-set-resolution -m").output, QByteArray("1680x1050 60Hz\n"));
    QCOMPARE(device.call("kt-set-resolution DMT").status, 2);
    QCOMPARE(device.call("kt-set-resolution").status, 0);
    QCOMPARE(device.read("lab/state/display-mode").trimmed(), QByteArray("CEA 16"));
}

void StandInsTest::sudoRunsStandInsOnly()
{
    const LabDevice device;
    const QString forbidden = device.path("tmp/forbidden");
    for (const char *program : {"touch", "/usr/bin/touch", "../../usr/bin/touch"}) {
        const Outcome outcome = device.call("sudo", {QLatin1String(program), forbidden});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.error, QByteArray("sudo: ") + program + ": command not found\n");
        QVERIFY(!QFile::exists(forbidden));
    }
    const QString service = device.path("etc/init.d/ntp");
    QCOMPARE(device.call("sudo", {service, QStringLiteral("start")}).status, 0);
    QCOMPARE(device.call("sudo date -s \"5 Mar 2024\"").status, 0);
    QCOMPARE(device.calls().mid(3).join(QLatin1Char('\n')),
             QStringLiteral("sudo %1 start\nntp start\nsudo date -s '5 Mar 2024'\ndate -s '5 Mar 2024'")
                 .arg(service));
    QVERIFY(QFile::remove(device.path("usr/bin/date")));
    QCOMPARE(device.call("sudo date").status, 1);
}

void StandInsTest::pkillReachesThisDeviceOnly()
{
    const LabDevice device;
    QProcess stranger;
    stranger.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QProcess client;
    client.setProcessEnvironment([&device] {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("KT_DEVICE_ROOT"), device.path());
        return environment;
    }());
    client.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(stranger.waitForStarted() && client.waitForStarted());

    QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 0);
    QVERIFY(client.waitForFinished());
    QCOMPARE(client.exitStatus(), QProcess::CrashExit);
    QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 1);
    QCOMPARE(stranger.state(), QProcess::Running);
    stranger.kill();
    stranger.waitForFinished();
}

void StandInsTest::rootIsKept()
{
    const LabDevice device;
    device.lab("cable unplug");
    QVERIFY(QFile::remove(device.path("usr/bin/kt-switch")) && QFile::remove(device.path("usr/bin/route")));
    device.write("usr/bin/kt-switch", "my own tool");
    device.makeAgain();
    QCOMPARE(device.read("lab/state/cable"), QByteArray("unplugged\n"));
    QCOMPARE(device.read("usr/bin/kt-switch"), QByteArray("my own tool"));
    QCOMPARE(gateways(device), QStringLiteral("10.77.0.1 0.0.0.0"));
}

void StandInsTest::documentIsChanged()
{
    const LabDevice device;
    device.write(documentPath, R"({"a b": {"on": false, "kept": 1}})");
    QCOMPARE(device.lab("document \"a b\" on true").status, 0);
    QCOMPARE(device.lab("document c d 10.77.0.24").status, 0);
    QCOMPARE(QJsonDocument::fromJson(device.read(documentPath)),
             QJsonDocument::fromJson(R"({"a b": {"on": true, "kept": 1}, "c": {"d": "10.77.0.24"}})"));
    device.write(documentPath, "garbage");
    QVERIFY(device.lab("document a 1").status != 0);
    QCOMPARE(device.read(documentPath), QByteArray("garbage"));
}

void StandInsTest::usbDevicesComeAndGo()
{
    const LabDevice device;
    QCOMPARE(device.lab("usb unplug f0a1:0101").status, 0);
    QCOMPARE(device.lab("usb unplug f0d4:0401").status, 0);
    QCOMPARE(device.lab("usb plug F0A1:0102").status, 0);
    device.makeAgain();
    const QByteArray listed = device.lab("usb list").output;
    QVERIFY2(listed.endsWith("005 f0a1:0101\n006 f0b2:0210\n007 f0c3:0301\n009 f0a1:0102\n"), listed);
    for (const char *wrong : {"usb unplug f0d4:0401", "usb unplug", "usb plug f0d4", "usb shake"})
        QVERIFY2(device.lab(wrong).status != 0, wrong);
}

QTEST_GUILESS_MAIN(StandInsTest)
#include "standinstest.moc"
