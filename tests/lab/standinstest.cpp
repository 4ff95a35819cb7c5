// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

namespace {

const QString documentPath = "/var/lib/kt964/config.json";

struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray error;
};

Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    process.waitForFinished();
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// A device whose tools are called by command lines: words with blanks in double quotes, '' for an empty one.
struct LabDevice : TestDevice
{
    Outcome call(const QString &commandLine) const
    {
        QStringList words = QProcess::splitCommand(commandLine);
        words.replaceInStrings("''", QString());
        return run(path("/usr/bin/" + words.takeFirst()), words);
    }
    /// A sub-command of kt-lab on this device.
    int lab(const QString &commandLine) const
    {
        return run(program(), QProcess::splitCommand(commandLine) + QStringList{"--root", path("")}).status;
    }
    static QString program() { return qEnvironmentVariable("KT_BIN_DIR") + "/kt-lab"; }
    bool networkConfig(const QString &subCommand) const
    {
        return call("kt-network-config " + subCommand + " A " + documentPath).status == 0;
    }
    QByteArray networkAnswer(const QString &subCommand) const
    {
        return call("kt-network-config " + subCommand + " A").output.trimmed();
    }
    /// Some of the values that the network tool tells.
    QString values(const QString &query, const QStringList &keys) const
    {
        const QJsonObject answer = QJsonDocument::fromJson(networkAnswer(query)).object();
        QStringList words;
        for (const QString &key : keys)
            words += answer.value("values").toObject().value(key).toString();
        return words.join(' ');
    }
};

QByteArray document(const QByteArray &eth, const QByteArray &dns = "{}")
{
    return R"({"network settings": {"interfaces": {"eth": )" + eth + R"(, "wlan": {}}, "DNS": )" + dns + "}}";
}

} // namespace

/// The stand-ins for the device's tools, through the real program: what one call changes, another one
/// answers.
class StandInsTest : public QObject
{
    Q_OBJECT

private slots:
    void wiredConnection_data()
    {
        const TestTable<QByteArray, QString> table("eth", "answer");
        const QByteArray rest = R"(, "network mask": "255.255.0.0", "default gateway": "10.0.0.1"})";
        const QByteArray fixed = R"({"enabled": true, "type": "static", )";
        table.row("dhcp", R"({"enabled": true, "type": "dhcp", "IP address": "")" + rest,
                  "dhcp 10.77.0.10 255.255.255.0 10.77.0.1");
        table.row("static", fixed + R"("IP address": "10.0.0.5")" + rest,
                  "static 10.0.0.5 255.255.0.0 10.0.0.1");
        table.row("static, other key", fixed + R"("Ip address": "10.0.0.5")" + rest,
                  "static 10.0.0.5 255.255.0.0 10.0.0.1");
        table.row("off", R"({"enabled": false, "type": "off"})", "dhcp   ");
        table.row("static, no mask", fixed + R"("IP address": "10.0.0.5"})", "dhcp   ");
    }

    void wiredConnection()
    {
        QFETCH(QByteArray, eth);
        QFETCH(QString, answer);
        const bool connects = !answer.endsWith(' ');
        const LabDevice device;
        device.write(documentPath, document(eth));
        QVERIFY(device.networkConfig("set-config"));
        QCOMPARE(device.networkConfig("connect-ethernet"), connects);
        QCOMPARE(device.values("get-eth0-parameters",
                               {"type", "ip address", "netmask address", "gateway address"}),
                 answer);
        QCOMPARE(device.networkAnswer("is-wired-connected"), QByteArray(connects ? "true" : "false"));
    }

    void unusableDocumentChangesNothing()
    {
        const LabDevice device;
        device.write(documentPath,
                     document("{}", R"({"type": "static", "dns1": "10.0.0.2", "domain": "lan"})"));
        QVERIFY(device.networkConfig("set-config"));
        const QByteArray stored = device.read("/lab/state/network.json");
        QVERIFY(stored.contains("10.0.0.2"));
        for (const char *content : {"", "{\"network settings\"", "[]", "{\"network settings\": 7}"}) {
            device.write(documentPath, content);
            QVERIFY(!device.networkConfig("set-config"));
            QCOMPARE(device.read("/lab/state/network.json"), stored);
            QCOMPARE(device.read("/etc/resolv.conf"), QByteArray("search lan\nnameserver 10.0.0.2\n"));
        }
    }

    void wifi_data()
    {
        const TestTable<QString, QByteArray> table("call", "verdict");
        const QByteArray wrongCertificate = "certificate verification failed";
        table.row("right key", R"(kt-check-wifi "Ward 3" ward3-passphrase 0)", "connected");
        table.row("wrong key", R"(kt-check-wifi "Ward 3" ward3 0)", "incorrect key");
        table.row("open", R"(kt-check-wifi Visitors '' 0)", "connected");
        table.row("hidden", "kt-check-wifi Basement basement-passphrase 1", "connected");
        table.row("sought as shown", "kt-check-wifi Basement basement-passphrase 0", "network not found");

        const QString staff = R"(kt-enterprise-wifi "Hospital Staff" nurse )";
        const QString known = " auto auto 0 /var/lib/kt964/certificates/cacerts/hospital-ca.pem ";
        const QString other = " auto auto 0 /var/lib/kt964/certificates/cacerts/other.pem ";
        table.row("password", staff + "peap" + known + ".p12 staff-password ''", "connected");
        table.row("unchecked server", staff + "peap auto auto 0 '' .p12 staff-password ''", "connected");
        table.row("wrong password", staff + "peap" + known + ".p12 x ''", "incorrect key");
        table.row("other CA", staff + "peap" + other + ".p12 staff-password ''", wrongCertificate);
        table.row("certificate", staff + "tls" + known + "/tmp/me.p12 '' ''", "connected");
        table.row("stored certificate", staff + "tls" + known + "mine.p12 '' ''", "connected");
        table.row("no certificate", staff + "tls" + known + ".p12 '' ''", wrongCertificate);
    }

    void wifi()
    {
        QFETCH(QString, call);
        QFETCH(QByteArray, verdict);
        const LabDevice device;
        for (const char *file : {"cacerts/hospital-ca.pem", "cacerts/other.pem", "mine.p12"})
            device.write(QString("/var/lib/kt964/certificates/") + file, "certificate");
        device.write("/tmp/me.p12", "certificate");
        QCOMPARE(device.call(call).output.split('\n').value(1), verdict);
        const QString told = device.values("check-wireless-point", {"status", "ssid"});
        QCOMPARE(told.startsWith("true ") && call.contains(told.mid(5)), verdict == "connected");
    }

    void sudoRunsStandInsOnly()
    {
        const LabDevice device;
        const QString forbidden = device.path("/tmp/forbidden");
        for (const char *program : {"touch", "/usr/bin/touch", "../../usr/bin/touch"}) {
            const Outcome outcome = device.call(QString("sudo %1 %2").arg(program, forbidden));
            QCOMPARE(outcome.status, 1);
            QCOMPARE(outcome.error, QByteArray("sudo: ") + program + ": command not found\n");
            QVERIFY(!QFile::exists(forbidden));
        }
        device.forgetCalls();
        QCOMPARE(device.call("sudo date -s \"5 Mar 2024\"").status, 0);
        QCOMPARE(device.calls(), QStringList({"sudo date -s '5 Mar 2024'", "date -s '5 Mar 2024'"}));
        device.removeTool("/usr/bin/date");
        QCOMPARE(device.call("sudo date").status, 1);
    }

    void pkillReachesThisDeviceOnly()
    {
        const LabDevice device;
        QProcess stranger;
        QProcessEnvironment elsewhere = QProcessEnvironment::systemEnvironment();
        elsewhere.remove("KT_DEVICE_ROOT");
        stranger.setProcessEnvironment(elsewhere);
        stranger.start("sleep", {"60"});
        QProcess client;
        client.start("sleep", {"60"});
        QVERIFY(stranger.waitForStarted() && client.waitForStarted());
        QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 0);
        QVERIFY(client.waitForFinished());
        QCOMPARE(client.exitStatus(), QProcess::CrashExit);
        QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 1);
        QCOMPARE(stranger.state(), QProcess::Running);
        stranger.kill();
        stranger.waitForFinished();
    }

    void rootIsKept()
    {
        const LabDevice device;
        QCOMPARE(device.lab("cable unplug"), 0);
        device.removeTool("/usr/bin/route");
        device.setTool("/usr/bin/kt-switch", "my own tool");
        run(LabDevice::program(), {"make-root", device.path("")});
        QCOMPARE(device.read("/lab/state/cable"), QByteArray("unplugged\n"));
        QVERIFY(device.read("/usr/bin/kt-switch").contains("my own tool"));
        QVERIFY(device.call("route -n").output.contains("10.77.0.1"));
    }

    void documentIsChanged()
    {
        const LabDevice device;
        device.write(documentPath, R"({"a b": {"on": false, "kept": 1}})");
        QCOMPARE(device.lab("document \"a b\" on true"), 0);
        QCOMPARE(device.lab("document c d 10.77.0.24"), 0);
        QCOMPARE(QJsonDocument(device.document()),
                 QJsonDocument::fromJson(R"({"a b": {"on": true, "kept": 1}, "c": {"d": "10.77.0.24"}})"));
        device.write(documentPath, "garbage");
        QVERIFY(device.lab("document a 1") != 0);
        QCOMPARE(device.read(documentPath), QByteArray("garbage"));
    }

    void hangingTool_data()
    {
        const TestTable<bool> table("ignoresTermination");
        table.row("hang", false);
        table.row("stubborn", true);
    }

    void hangingTool()
    {
        QFETCH(bool, ignoresTermination);
        const LabDevice device;
        QCOMPARE(device.lab("fault hostname sulk"), 2);
        QCOMPARE(device.lab(QString("fault hostname ") + QTest::currentDataTag()), 0);
        QProcess tool;
        tool.start(device.path("/usr/bin/hostname"), QStringList());
        QTRY_COMPARE(device.calls().size(), 1);
        const auto ignoredSignals = [&tool] {
            QFile status(QString("/proc/%1/status").arg(tool.processId()));
            const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
            return text.mid(text.indexOf("SigIgn:") + 7, 17).trimmed().toULongLong(nullptr, 16);
        };
        QTRY_COMPARE((ignoredSignals() >> (SIGTERM - 1) & 1) != 0, ignoresTermination);
        QCOMPARE(tool.state(), QProcess::Running);
        ignoresTermination ? tool.kill() : tool.terminate();
        QVERIFY(tool.waitForFinished());
    }

    void callsMadeAtOnceDoNotMix()
    {
        const LabDevice device;
        const QString word(2000, 'x');
        std::vector<std::unique_ptr<QProcess>> tools;
        for (int i = 0; i < 12; ++i) {
            tools.push_back(std::make_unique<QProcess>());
            tools.back()->start(device.path("/usr/bin/kt-switch"), {word});
        }
        for (const auto &tool : tools)
            QVERIFY(tool->waitForFinished());
        QCOMPARE(device.calls(), QVector<QString>(12, QString("kt-switch ") + word).toList());
    }

    void messageReachesTheProgram()
    {
        const LabDevice device;
        QCOMPARE(device.lab("message {}"), 2);
        QProcess program;
        program.start("sleep", {"60"});
        QVERIFY(program.waitForStarted());
        device.write("/lab/kt964.pid", QByteArray::number(program.processId()) + '\n');
        QCOMPARE(device.lab("message \"{ }\""), 0);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), SIGUSR1);
        QCOMPARE(device.read("/tmp/msg.json"), QByteArray("{ }\n"));
    }
};

QTEST_GUILESS_MAIN(StandInsTest)
#include "standinstest.moc"
