// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

struct Answer
{
    int status = -1;
    QString output;
};

Answer call(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(qEnvironmentVariable("KT_BIN_DIR") + '/' + tool, arguments);
    if (!process.waitForFinished(40000))
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()).trimmed()};
}

Answer config(const QString &subCommand, const QStringList &document = {})
{
    return call("kt-network-config", QStringList{subCommand, "A"} + document);
}

bool says(const QString &question)
{
    return config(question).output == "true";
}

QJsonObject parameters()
{
    return QJsonDocument::fromJson(config("get-eth0-parameters").output.toUtf8())
        .object()
        .value("values")
        .toObject();
}

QJsonObject values(const QString &type, const QString &address)
{
    const bool has = !address.isEmpty();
    return {{"type", type},
            {"ip address", address},
            {"netmask address", has ? "255.255.255.0" : ""},
            {"gateway address", has ? "10.77.0.1" : ""}};
}

QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray nameServers()
{
    QByteArray text = contentOf("/run/NetworkManager/resolv.conf");
    return text.mid(text.indexOf('\n') + 1);
}

void moveCable(const char *state)
{
    const QString network = QStringLiteral("--net=/proc/%1/ns/net").arg(qEnvironmentVariable("KT_TEST_PEER"));
    QCOMPARE(QProcess::execute("nsenter", {network, "ip", "link", "set", "lab0", state}), 0);
}

const QString leased = "10.77.0.10";
const QString chosen = "10.77.0.55";

} // namespace

/// The network tools over a real NetworkManager: one device, from its first start on.
class NetworkToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void connectsAnewDeviceByItself();
    void saysWhatItIsAndWhatItLacks_data();
    void saysWhatItIsAndWhatItLacks();
    void followsTheDocument();
    void takesTheAddressOffAndBringsItBack();
    void survivesThatTheCableIsOut();
    void turnsTheInterfaceOffAndOn();
    void publishesWhatDhcpOffers();
    void saysThatNetworkManagerIsMissing();

private:
    QStringList document(const char *type, bool enabled = true, const QString &address = chosen);

    QTemporaryDir m_folder;
};

QStringList NetworkToolsTest::document(const char *type, bool enabled, const QString &address)
{
    const QJsonObject eth{{"enabled", enabled},
                          {"type", type},
                          {"IP address", address},
                          {"network mask", "255.255.255.0"},
                          {"default gateway", "10.77.0.1"}};
    const QJsonObject dns{{"type", type}, {"dns1", "10.77.0.5"}, {"dns2", ""}, {"domain", "ward.example"}};
    const QJsonObject network{{"interfaces", QJsonObject{{"eth", eth}}}, {"DNS", dns}};
    QFile file(m_folder.filePath("config.json"));
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(QJsonObject{{"network settings", network}}).toJson());
    return {file.fileName()};
}

void NetworkToolsTest::connectsAnewDeviceByItself()
{
    QTRY_VERIFY_WITH_TIMEOUT(says("is-wired-connected"), 15000);
    QTRY_COMPARE(parameters(), values("dhcp", leased));
    QTRY_COMPARE(nameServers(), QByteArray("nameserver 10.77.0.1\n"));
}

void NetworkToolsTest::saysWhatItIsAndWhatItLacks_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");

    const auto row = [](const QString &line, int status, const QString &output) {
        QStringList words = line.split(' ');
        const QString tool = words.takeFirst();
        QTest::newRow(qPrintable(line)) << tool << words << status << output;
    };
    row("kt-network-config is-wired-linked A", 0, "true");
    row("kt-network-config is-wired-on A", 0, "true");
    row("kt-network-config is-wireless-connected A", 0, "false");
    row("kt-network-config check-wireless-point A", 0, R"({"values":{"status":"false"}})");
    row("kt-network-config get-wifi-list A", 1, "[]");
    row("kt-network-config disconnect-wifi A", 0, "");
    row("kt-check-wifi Ward password 0", 1, "network not found");
    row("kt-check-wifi Ward short 0", 1, "incorrect key");
    row("kt-check-gateway", 0, "");
    row("kt-network-config is-wired-linked", 1, "");
    row("kt-network-config connect-ethernet B", 1, "");
    row("kt-network-config set-config A /etc/passwd", 1, "");
    row("kt-ip-settings -a eth1 10.77.0.9 24", 2, "");
    row("kt-ip-settings -d eth0 10.77.0.9 33", 2, "");
    row("kt-ip-settings -d eth0 10.77.0.9 24", 1, "");
    row("kt-check-wifi Ward password", 2, "");
    row("kt-enterprise-wifi Ward user leap auto auto 0   password ", 2, "");
}

void NetworkToolsTest::saysWhatItIsAndWhatItLacks()
{
    QFETCH(QString, tool);
    QFETCH(QStringList, arguments);
    const Answer answer = call(tool, arguments);
    QTEST(answer.status, "status");
    QTEST(answer.output, "output");
}

void NetworkToolsTest::followsTheDocument()
{
    // Stored, and not yet in effect but for the name servers.
    QCOMPARE(config("set-config", document("static")).status, 0);
    QCOMPARE(parameters(), values("static", leased));
    QTRY_COMPARE(nameServers(), QByteArray("search ward.example\nnameserver 10.77.0.5\n"));

    QCOMPARE(config("connect-ethernet").status, 0);
    QCOMPARE(parameters(), values("static", chosen));
    QCOMPARE(call("kt-check-gateway", {}).status, 0);

    QCOMPARE(config("set-config", document("dhcp", false)).status, 0);
    QCOMPARE(config("disconnect-ethernet").status, 0);
    QCOMPARE(parameters(), values("dhcp", ""));
    QVERIFY(says("is-wired-linked"));
    QCOMPARE(config("connect-ethernet").status, 1); // disabled

    QCOMPARE(config("set-config", document("static", true, "10.77.0.999")).status, 1);
    QCOMPARE(config("connect-ethernet").status, 1);

    QCOMPARE(config("autoconnect", document("dhcp")).status, 0);
    QCOMPARE(parameters(), values("dhcp", leased));
    QTRY_COMPARE(nameServers(), QByteArray("nameserver 10.77.0.1\n"));
}

void NetworkToolsTest::takesTheAddressOffAndBringsItBack()
{
    QCOMPARE(call("kt-ip-settings", {"-d", "eth0", leased, "24"}).status, 0);
    QVERIFY(!says("is-wired-connected"));
    QCOMPARE(call("kt-ip-settings", {"-a", "eth0", leased, "24", "10.77.0.255"}).status, 0);
    QCOMPARE(parameters(), values("dhcp", leased));
    // Another address than the lease is not laid over it.
    QCOMPARE(call("kt-ip-settings", {"-a", "eth0", chosen, "24"}).status, 0);
    QCOMPARE(parameters(), values("dhcp", leased));
}

void NetworkToolsTest::survivesThatTheCableIsOut()
{
    moveCable("down");
    QTRY_VERIFY(!says("is-wired-linked"));
    QCOMPARE(call("kt-ip-settings", {"-d", "eth0", leased, "24"}).status, 0);
    QVERIFY(!says("is-wired-connected"));
    QCOMPARE(config("connect-ethernet").status, 1);
    QCOMPARE(call("kt-ip-settings", {"-a", "eth0", leased, "24"}).status, 1);

    // The address comes back whether or not the launcher asks for it.
    moveCable("up");
    QTRY_COMPARE_WITH_TIMEOUT(parameters(), values("dhcp", leased), 10000);
    QCOMPARE(call("kt-ip-settings", {"-a", "eth0", leased, "24"}).status, 0);
    QCOMPARE(call("kt-check-gateway", {}).status, 0);
    QCOMPARE(parameters(), values("dhcp", leased));
}

void NetworkToolsTest::turnsTheInterfaceOffAndOn()
{
    QCOMPARE(config("turn-off-wired").status, 0);
    QVERIFY(!says("is-wired-on"));
    QVERIFY(!says("is-wired-connected"));
    QCOMPARE(config("turn-on-wired").status, 0);
    QVERIFY(says("is-wired-on"));
    QCOMPARE(config("turn-off-wired").status, 0);
    QCOMPARE(config("connect-ethernet").status, 0);
    QCOMPARE(parameters(), values("dhcp", leased));
}

void NetworkToolsTest::publishesWhatDhcpOffers()
{
    const QString offer = "/tmp/dhcp-options.conf";
    const auto message = [] {
        return QJsonDocument::fromJson(contentOf("/tmp/msg.json"))
            .object()
            .value("network status")
            .toObject();
    };
    // What another user may have put there.
    const QString target = m_folder.filePath("target");
    QVERIFY(QFile::link(target, offer));

    QCOMPARE(call("kt-network-event", {"eth0", "up"}).status, 0);
    QCOMPARE(contentOf(offer), QByteArray("[QMD]\nqmd_address=qmd.example:8443\n"));
    QVERIFY(!QFile::exists(target));
    QCOMPARE(message(), (QJsonObject{{"interface", "eth0"}, {"message", "connected"}}));

    QCOMPARE(config("disconnect-ethernet").status, 0);
    QCOMPARE(call("kt-network-event", {"eth0", "down"}).status, 0);
    QVERIFY(!QFile::exists(offer));
    QCOMPARE(message().value("message").toString(), QString("link"));
}

void NetworkToolsTest::saysThatNetworkManagerIsMissing()
{
    const int manager = qEnvironmentVariableIntValue("KT_TEST_MANAGER");
    QCOMPARE(kill(manager, SIGTERM), 0);
    QTRY_COMPARE(config("get-eth0-parameters").status, 1);
    QCOMPARE(config("connect-ethernet").status, 1);
    QCOMPARE(call("kt-check-gateway", {}).status, 1);
    QCOMPARE(config("is-wired-linked").output, QString("true")); // the kernel knows
    QCOMPARE(config("is-wireless-connected").output, QString("false"));
}

QTEST_GUILESS_MAIN(NetworkToolsTest)
#include "networktoolstest.moc"
