// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
const char *documentPath = "/var/lib/kt964/config.json";

QByteArray document(const QByteArray &eth, const QByteArray &wlan = "{}", const QByteArray &dns = "{}")
{
    return R"({"general settings": {"device name": "Ward 3's"}, "network settings": {"interfaces": {"eth": )"
        + eth + R"(, "wlan": )" + wlan + R"(}, "DNS": )" + dns + "}}";
}

QJsonObject values(const Outcome &outcome)
{
    return QJsonDocument::fromJson(outcome.output).object().value(QLatin1String("values")).toObject();
}

QStringList addressing(const LabDevice &device, const QString &query)
{
    const QJsonObject found = values(device.networkConfig(query));
    QStringList words;
    for (const char *key : {"type", "ip address", "netmask address", "gateway address"})
        words << found.value(QLatin1String(key)).toString();
    return words;
}

QStringList routes(const LabDevice &device)
{
    const QByteArray table = device.call(QStringLiteral("route"), {QStringLiteral("-n")}).output;
    QStringList gateways;
    const QStringList lines = QString::fromUtf8(table).split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(2);
    for (const QString &line : lines)
        gateways << line.simplified().section(QLatin1Char(' '), 1, 1);
    return gateways;
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
    void enterpriseWifi_data();
    void enterpriseWifi();
    void scanKeepsSecrets();
    void hostNames();
    void sudoRunsStandInsOnly();
    void pkillReachesThisDeviceOnly();
    void rootIsKept();
};

void StandInsTest::wiredConnection_data()
{
    QTest::addColumn<QByteArray>("eth");
    QTest::addColumn<bool>("connects");
    QTest::addColumn<QStringList>("answer");
    const QStringList none{QStringLiteral("dhcp"), QString(), QString(), QString()};
    const QStringList fixed{QStringLiteral("static"), QStringLiteral("10.0.0.5"),
                            QStringLiteral("255.255.0.0"), QStringLiteral("10.0.0.1")};
    const QByteArray rest = R"(, "network mask": "255.255.0.0", "default gateway": "10.0.0.1"})";
    QTest::newRow("dhcp") << QByteArray(R"({"enabled": true, "type": "dhcp", "IP address": ""})") << true
                          << QStringList{QStringLiteral("dhcp"), QStringLiteral("10.77.0.10"),
                                         QStringLiteral("255.255.255.0"), QStringLiteral("10.77.0.1")};
    QTest::newRow("static") << R"({"enabled": true, "type": "static", "IP address": "10.0.0.5")" + rest
                            << true << fixed;
    QTest::newRow("static, other key")
        << R"({"enabled": true, "type": "static", "Ip address": "10.0.0.5")" + rest << true << fixed;
    QTest::newRow("off") << QByteArray(R"({"enabled": false, "type": "off"})") << false << none;
    QTest::newRow("static, no mask") << QByteArray(
        R"({"enabled": true, "type": "static", "IP address": "10.0.0.5"})")
                                     << false << none;
}

void StandInsTest::wiredConnection()
{
    QFETCH(QByteArray, eth);
    QFETCH(bool, connects);
    QFETCH(QStringList, answer);
    const LabDevice device;
    device.write(QLatin1String(documentPath), document(eth));

    QCOMPARE(device.networkConfig(QStringLiteral("set-config"), QLatin1String(documentPath)).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("connect-ethernet")).status, connects ? 0 : 1);
    QCOMPARE(addressing(device, QStringLiteral("get-eth0-parameters")), answer);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-connected")).output,
             QByteArray(connects ? "true\n" : "false\n"));
}

void StandInsTest::cableDecidesAboutConnecting()
{
    const LabDevice device;
    QCOMPARE(device.lab({QStringLiteral("cable"), QStringLiteral("unplug")}).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-linked")).output, QByteArray("false\n"));
    // The address outlives the cable until the program takes it away.
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-connected")).output, QByteArray("true\n"));

    QCOMPARE(device.networkConfig(QStringLiteral("turn-off-wired")).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-on")).output, QByteArray("false\n"));
    QCOMPARE(device.networkConfig(QStringLiteral("connect-ethernet")).status, 1);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-connected")).output, QByteArray("false\n"));

    QCOMPARE(device.lab({QStringLiteral("cable"), QStringLiteral("plug")}).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("connect-ethernet")).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-connected")).output, QByteArray("true\n"));
}

void StandInsTest::unusableDocumentChangesNothing()
{
    const LabDevice device;
    device.write(QLatin1String(documentPath),
                 document("{}", "{}",
                          R"({"type": "static", "dns1": "10.0.0.2", "dns2": "10.0.0.3", "domain": "lan"})"));
    QCOMPARE(device.networkConfig(QStringLiteral("set-config"), QLatin1String(documentPath)).status, 0);
    const QString stored = device.state(QStringLiteral("network.json"));
    const QByteArray nameServers("search lan\nnameserver 10.0.0.2\nnameserver 10.0.0.3\n");

    for (const char *content : {"", "{\"network settings\"", "[]", "{\"network settings\": 7}"}) {
        device.write(QLatin1String(documentPath), content);
        QCOMPARE(device.networkConfig(QStringLiteral("set-config"), QLatin1String(documentPath)).status, 1);
        QCOMPARE(device.state(QStringLiteral("network.json")), stored);
        QCOMPARE(device.read(QStringLiteral("etc/resolv.conf")), nameServers);
    }
}

void StandInsTest::addressToolAndRoutes()
{
    const LabDevice device;
    const QStringList whole{QStringLiteral("10.77.0.1"), QStringLiteral("0.0.0.0")};
    const QStringList address{QStringLiteral("eth0"), QStringLiteral("10.77.0.10"), QStringLiteral("24")};
    QCOMPARE(routes(device), whole);

    QCOMPARE(
        device.call(QStringLiteral("kt-ip-settings"), QStringList(QStringLiteral("-d")) + address).status, 0);
    QCOMPARE(routes(device), QStringList());
    QCOMPARE(
        device.call(QStringLiteral("kt-ip-settings"), QStringList(QStringLiteral("-d")) + address).status, 1);
    QCOMPARE(
        device
            .call(QStringLiteral("kt-ip-settings"),
                  QStringList(QStringLiteral("-a")) + address + QStringList(QStringLiteral("10.77.0.255")))
            .status,
        0);
    // The route to everywhere comes back only when the gateway is checked.
    QCOMPARE(routes(device), whole.mid(1));
    QCOMPARE(device.call(QStringLiteral("kt-check-gateway")).status, 0);
    QCOMPARE(routes(device), whole);

    QCOMPARE(
        device.call(QStringLiteral("kt-ip-settings"), {QStringLiteral("-a"), QStringLiteral("eth0")}).status,
        2);
}

void StandInsTest::wifi_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("verdict");
    const QString shown = QStringLiteral("0");
    QTest::newRow("right key") << QStringList{QStringLiteral("Ward 3"), QStringLiteral("ward3-passphrase"),
                                              shown}
                               << QByteArray("connected");
    QTest::newRow("wrong key") << QStringList{QStringLiteral("Ward 3"), QStringLiteral("ward3"), shown}
                               << QByteArray("incorrect key");
    QTest::newRow("open") << QStringList{QStringLiteral("Visitors"), QString(), shown}
                          << QByteArray("connected");
    QTest::newRow("hidden") << QStringList{QStringLiteral("Basement"), QStringLiteral("basement-passphrase"),
                                           QStringLiteral("1")}
                            << QByteArray("connected");
    QTest::newRow("hidden, sought as shown")
        << QStringList{QStringLiteral("Basement"), QStringLiteral("basement-passphrase"), shown}
        << QByteArray("network not found");
}

void StandInsTest::wifi()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, verdict);
    const LabDevice device;
    const Outcome outcome = device.call(QStringLiteral("kt-check-wifi"), arguments);
    QCOMPARE(outcome.output.split('\n').value(1), verdict);

    const bool connected = verdict == "connected";
    QCOMPARE(device.networkConfig(QStringLiteral("is-wireless-connected")).output,
             QByteArray(connected ? "true\n" : "false\n"));
    const QJsonObject point = values(device.networkConfig(QStringLiteral("check-wireless-point")));
    QCOMPARE(point.value(QLatin1String("status")).toString(),
             connected ? QStringLiteral("true") : QStringLiteral("false"));
    QCOMPARE(point.value(QLatin1String("ssid")).toString(), connected ? arguments.at(0) : QString());
    QCOMPARE(point.value(QLatin1String("signal strength")).isString(), connected);
}

void StandInsTest::associationWithoutAddress()
{
    const LabDevice device;
    QCOMPARE(device
                 .lab({QStringLiteral("wifi"), QStringLiteral("associate"), QStringLiteral("Visitors"),
                       QStringLiteral("--no-address")})
                 .status,
             0);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wireless-connected")).output, QByteArray("false\n"));
    QCOMPARE(values(device.networkConfig(QStringLiteral("check-wireless-point")))
                 .value(QLatin1String("ssid"))
                 .toString(),
             QStringLiteral("Visitors"));
}

void StandInsTest::autoconnect()
{
    const LabDevice device;
    device.write(
        QLatin1String(documentPath),
        document(R"({"enabled": true, "type": "off"})",
                 R"({"enabled": true, "type": "static", "IP address": "10.1.0.7", "network mask": "255.0.0.0",
                              "default gateway": "10.1.0.1", "ssid": "Ward 3", "passphrase": "ward3-passphrase"})"));
    QCOMPARE(device.networkConfig(QStringLiteral("disconnect-ethernet")).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("autoconnect"), QLatin1String(documentPath)).status, 0);
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-connected")).output, QByteArray("false\n"));
    QCOMPARE(addressing(device, QStringLiteral("get-wlan0-parameters")),
             QStringList({QStringLiteral("static"), QStringLiteral("10.1.0.7"), QStringLiteral("255.0.0.0"),
                          QStringLiteral("10.1.0.1")}));
    QCOMPARE(routes(device).value(0), QStringLiteral("10.1.0.1"));
    QCOMPARE(device
                 .call(QStringLiteral("sudo"),
                       {QStringLiteral("kt-network-config"), QStringLiteral("disconnect-wifi"),
                        QStringLiteral("A")})
                 .status,
             0);
    QCOMPARE(routes(device), QStringList());
}

void StandInsTest::enterpriseWifi_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("ca");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QByteArray>("verdict");
    const QString folder = QStringLiteral("/var/lib/kt964/certificates/cacerts/");
    const QString ca = folder + QStringLiteral("hospital-ca.pem");
    const QString peap = QStringLiteral("peap");
    const QString tls = QStringLiteral("tls");
    const QString right = QStringLiteral("staff-password");
    QTest::newRow("password") << peap << ca << QStringLiteral(".p12") << right << QByteArray("connected");
    QTest::newRow("unchecked server")
        << peap << QString() << QStringLiteral(".p12") << right << QByteArray("connected");
    QTest::newRow("wrong password") << peap << ca << QStringLiteral(".p12") << QStringLiteral("x")
                                    << QByteArray("incorrect key");
    QTest::newRow("other CA") << peap << folder + QStringLiteral("other.pem") << QStringLiteral(".p12")
                              << right << QByteArray("certificate verification failed");
    QTest::newRow("certificate") << tls << ca << QStringLiteral("/tmp/me.p12") << QString()
                                 << QByteArray("connected");
    QTest::newRow("no certificate") << tls << ca << QStringLiteral(".p12") << QString()
                                    << QByteArray("certificate verification failed");
}

void StandInsTest::enterpriseWifi()
{
    QFETCH(QString, method);
    QFETCH(QString, ca);
    QFETCH(QString, client);
    QFETCH(QString, password);
    const LabDevice device;
    for (const char *name : {"cacerts/hospital-ca.pem", "cacerts/other.pem"})
        device.write(QStringLiteral("var/lib/kt964/certificates/") + QLatin1String(name), "certificate");
    device.write(QStringLiteral("tmp/me.p12"), "certificate");
    const Outcome outcome = device.call(QStringLiteral("kt-enterprise-wifi"),
                                        {QStringLiteral("Hospital Staff"), QStringLiteral("nurse"), method,
                                         QStringLiteral("auto"), QStringLiteral("auto"), QStringLiteral("0"),
                                         ca, client, password, QString()});
    QTEST(outcome.output.split('\n').value(1), "verdict");
}

void StandInsTest::scanKeepsSecrets()
{
    const LabDevice device;
    const QByteArray scan = device.networkConfig(QStringLiteral("get-wifi-list")).output;
    const QJsonArray networks = QJsonDocument::fromJson(scan).array();
    QVERIFY(networks.size() >= 4);
    QVERIFY(networks.at(0).toObject().value(QLatin1String("signal strength")).isDouble());
    for (const char *secret : {"passphrase", "Basement", "staff-password", "hospital-ca"})
        QVERIFY2(!scan.contains(secret), secret);
}

void StandInsTest::hostNames()
{
    const LabDevice device;
    const QByteArray original = device.call(QStringLiteral("hostname")).output;
    device.write(QLatin1String(documentPath), document("{}"));
    QCOMPARE(device.call(QStringLiteral("kt-set-hostname"), {QStringLiteral("-j")}).status, 0);
    QCOMPARE(device.call(QStringLiteral("hostname")).output, QByteArray("Ward 3's\n"));
    QCOMPARE(device.call(QStringLiteral("kt-set-hostname"), {QStringLiteral("-r")}).status, 0);
    QCOMPARE(device.call(QStringLiteral("hostname")).output, original);
}

void StandInsTest::sudoRunsStandInsOnly()
{
    const LabDevice device;
    const QString sudo = QStringLiteral("sudo");
    const QString forbidden = device.path(QStringLiteral("tmp/forbidden"));
    for (const QString &program :
         {QStringLiteral("touch"), QStringLiteral("/usr/bin/touch"), QStringLiteral("../../usr/bin/touch")}) {
        const Outcome outcome = device.call(sudo, {program, forbidden});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(QString::fromUtf8(outcome.error),
                 QStringLiteral("sudo: %1: command not found\n").arg(program));
        QVERIFY(!QFile::exists(forbidden));
    }
    const QString service = device.path(QStringLiteral("etc/init.d/ntp"));
    QCOMPARE(device.call(sudo, {service, QStringLiteral("start")}).status, 0);
    QCOMPARE(device.call(sudo, {QStringLiteral("date"), QStringLiteral("-s"), QStringLiteral("5 Mar 2024")})
                 .status,
             0);
    QCOMPARE(
        device.calls().mid(3),
        QStringList({QStringLiteral("sudo %1 start").arg(service), QStringLiteral("ntp start"),
                     QStringLiteral("sudo date -s '5 Mar 2024'"), QStringLiteral("date -s '5 Mar 2024'")}));
    QVERIFY(QFile::remove(device.path(QStringLiteral("usr/bin/date"))));
    QCOMPARE(device.call(sudo, {QStringLiteral("date")}).status, 1);
}

void StandInsTest::pkillReachesThisDeviceOnly()
{
    const LabDevice device;
    QProcess stranger;
    stranger.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QProcess client;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KT_DEVICE_ROOT"), device.path(QString()));
    client.setProcessEnvironment(environment);
    client.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(stranger.waitForStarted() && client.waitForStarted());

    QCOMPARE(
        device.call(QStringLiteral("pkill"), {QStringLiteral("-SIGUSR1"), QStringLiteral("sleep")}).status,
        0);
    QVERIFY(client.waitForFinished());
    QCOMPARE(client.exitStatus(), QProcess::CrashExit);
    QCOMPARE(
        device.call(QStringLiteral("pkill"), {QStringLiteral("-SIGUSR1"), QStringLiteral("sleep")}).status,
        1);
    QCOMPARE(stranger.state(), QProcess::Running);
    stranger.kill();
    stranger.waitForFinished();
}

void StandInsTest::rootIsKept()
{
    const LabDevice device;
    const QString own = QStringLiteral("usr/bin/kt-switch");
    device.lab({QStringLiteral("cable"), QStringLiteral("unplug")});
    QVERIFY(QFile::remove(device.path(own)) && QFile::remove(device.path(QStringLiteral("usr/bin/route"))));
    device.write(own, "my own tool");
    QCOMPARE(device.lab({QStringLiteral("make-root"), device.path(QString())}).status, 0);
    QCOMPARE(device.state(QStringLiteral("cable")), QStringLiteral("unplugged"));
    QCOMPARE(device.read(own), QByteArray("my own tool"));
    QCOMPARE(routes(device).size(), 2);
}

QTEST_GUILESS_MAIN(StandInsTest)
#include "standinstest.moc"
