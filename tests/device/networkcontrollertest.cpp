// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/networkcontroller.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

#include <memory>

namespace {

const QString configTool = "kt-network-config";
const QString answers = "/lab/answers/kt-network-config";

using Reply = NetworkController::Reply;
using Question = void (NetworkController::*)(QObject *, const NetworkController::ReplyDone &);

/// Asks the controller and waits for what it says.
class Asker
{
public:
    explicit Asker(NetworkController &network)
        : m_network(network)
    { }
    Reply reply(Question question)
    {
        Reply said;
        wait([&](const auto &end) {
            (m_network.*question)(&m_context, [&said, end](Reply reply) {
                said = reply;
                end();
            });
        });
        return said;
    }
    bool accessPoint(NetworkProperty &property)
    {
        bool result = false;
        wait([&](const auto &end) {
            m_network.getActualWifi(&m_context, [&, end](bool known, const NetworkProperty &found) {
                property = found;
                result = known;
                end();
            });
        });
        return result;
    }
    QList<WifiItem> scan()
    {
        QList<WifiItem> found;
        wait([&](const auto &end) {
            m_network.GetWifiNetworkList(&m_context, [&found, end](const QList<WifiItem> &list) {
                found = list;
                end();
            });
        });
        return found;
    }

private:
    template <typename Start>
    void wait(const Start &start)
    {
        bool ended = false;
        start([&ended] { ended = true; });
        QVERIFY(!ended); // never while it is being asked
        QTRY_VERIFY(ended);
    }
    NetworkController &m_network;
    QObject m_context;
};
} // namespace

/// What the network tools are told, and how what they say is read.
class NetworkControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        QVERIFY(m_device->isValid());
    }

    void cleanup() { m_device.reset(); }

    void readsABareWord_data()
    {
        const TestTable<QByteArray, int> table("output", "expected");
        for (const char *output : {"true\n", "true", "\ntrue\n\n"})
            table.row(output, QByteArray(output), 1);
        table.row("false\n", "false\n", 0);
        for (const char *output : {"True\n", "true \n", "true\r\n", "1\n", "\n", "truetrue"})
            table.row(output, QByteArray(output), -1);
    }

    void readsABareWord()
    {
        QFETCH(const QByteArray, output);
        QFETCH(const int, expected);
        m_device->write(answers, output);
        NetworkController network;
        Asker asker(network);
        QCOMPARE(asker.reply(&NetworkController::CheckWiredPlugged),
                 expected < 0 ? Reply() : Reply(expected == 1));
    }

    void asksAToolOnceAtATime()
    {
        m_device->setFault(configTool, "slow 100");
        NetworkController network;
        QVector<bool> replies;
        auto gone = std::make_unique<QObject>();
        network.CheckWiredPlugged(gone.get(), [&](Reply) { QFAIL("nobody is there to hear it"); });
        for (int i = 0; i < 3; ++i)
            network.CheckWiredPlugged(&network, [&](Reply reply) { replies += reply.value_or(false); });
        gone.reset();
        QTRY_COMPARE(replies, QVector<bool>(3, true));
        QCOMPARE(m_device->calls(), QStringList("kt-network-config is-wired-linked A"));
    }

    void readsTheAccessPoint()
    {
        NetworkController network;
        Asker asker(network);
        NetworkProperty property;
        answer("check-wireless-point",
               R"({"values": {"status": "true", "ssid": "Zo\u00eb", "signal strength": "71"}})");
        QVERIFY(asker.accessPoint(property));
        QCOMPARE(property.essid(), "Zo\u00eb");
        QCOMPARE(property.signalQuality(), "71");
        for (const char *status : {"unsure", "false"}) {
            answer("check-wireless-point",
                   QByteArray(R"({"values": {"status": "%", "ssid": "x"}})").replace('%', status));
            QVERIFY(!asker.accessPoint(property));
            QCOMPARE(property.essid(), QString());
        }
    }

    void readsNothingFromABrokenTool_data()
    {
        const TestTable<QString> table("fault");
        for (const char *fault : {"missing", "garbage", "crash", "flood", "hang"})
            table.row(fault, QString::fromLatin1(fault));
    }

    void readsNothingFromABrokenTool()
    {
        QFETCH(const QString, fault);
        if (fault == "missing")
            m_device->removeTool("/usr/bin/kt-network-config");
        else
            m_device->setFault(configTool, fault);
        NetworkController network;
        if (fault == "hang")
            network.setQueryLimit(200);
        Asker asker(network);
        NetworkProperty property;
        QCOMPARE(asker.reply(&NetworkController::isEthernetConnected), Reply());
        QVERIFY(!asker.accessPoint(property));
        QVERIFY(asker.scan().isEmpty());
    }

    void readsTwoNameServers()
    {
        const auto servers = [](const char *file) {
            NetworkProperty property;
            property.setDns2("old");
            NetworkController::readNameServers(file, property);
            return property.dns1() + QLatin1Char(' ') + property.dns2();
        };
        QCOMPARE(servers("nameserver 10.0.0.1\nnameserver\t10.0.0.2\nnameserver 10.0.0.3\n"),
                 "10.0.0.1 10.0.0.2");
        QCOMPARE(servers("search nameserver x\noptions a\nnameserver 10.0.0.1"), "10.0.0.1 ");
        QCOMPARE(servers("nameserver 10.0.0.1\r\n\r\nnameserver 10.0.0.2 # b\r\n"), "10.0.0.1 10.0.0.2");
        QCOMPARE(servers(""), " ");
    }

    void mapsAndSortsTheScan()
    {
        answer("get-wifi-list", R"([
        {"ssid": "weak", "pairwise": "TKIP", "authentication": "PSK", "signal strength": 5},
        {"ssid": "strong", "pairwise": "CCMP", "authentication": "NONE", "signal strength": 99},
        {"ssid": "", "pairwise": "TKIP CCMP", "authentication": "802.1x", "signal strength": 50},
        {"ssid": "strong", "pairwise": "CCMP TKIP", "authentication": "SAE", "signal strength": 40}])");
        NetworkController network;
        const QList<WifiItem> scan = Asker(network).scan();
        QStringList rows;
        for (const WifiItem &item : scan) {
            rows += QString("%1|%2|%3|%4")
                        .arg(item.essid(), item.encrypt, item.security)
                        .arg(item.signalStrength);
            QVERIFY(!item.hidden);
        }
        QCOMPARE(rows,
                 QStringList(
                     {"strong|ccmp|open|99", "|auto|enterprise|50", "strong|||40", "weak|tkip|personal|5"}));
    }

    void handsCredentialsToTheTool()
    {
        NetworkController network;
        const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
        QVERIFY(!network.connectToWifi("My; $(net)", QString(), true));
        QTRY_COMPARE(ended.size(), 1);

        WifiItem item("Staff");
        item.userName = "nurse";
        item.authenticationMethod = "peap";
        item.encrypt = "auto";
        item.advancedSecurity = "wpa2";
        item.userPassword = "it's";
        item.clientCertPassword = "last";
        item.hidden = true;
        item.caCert = "/ca.pem";
        item.clientCert = "/me";
        QVERIFY(!network.connectToWifi(item));
        QTRY_COMPARE(ended.size(), 2);
        const QString store = m_device->path("/var/lib/kt964/certificates/cacerts/ca.pem");
        QCOMPARE(m_device->calls(),
                 QStringList({"kt-check-wifi 'My; $(net)' '' 1",
                              "kt-enterprise-wifi Staff nurse peap auto wpa2 1 " + store
                                  + " /me.p12 'it'\\''s' last"}));
    }

    void tellsOnceHowAJoinWent_data()
    {
        const TestTable<QByteArray, int> table("script", "result");
        table.row("missing", {}, 0);
        table.row("connected", "echo associating; echo connected", 2);
        table.row("last word counts", "echo connected; echo; echo incorrect key; echo other", 1);
        table.row("no word", "echo Connected; echo ' connected'; echo connected >&2", 0);
        table.row("crash", "echo incorrect key; kill -SEGV $$", 1);
        table.row("flood", "head -c 3000000 /dev/zero; echo; echo connected", 2);
    }

    void tellsOnceHowAJoinWent()
    {
        QFETCH(const QByteArray, script);
        QFETCH(const int, result);
        m_device->removeTool("/usr/bin/kt-check-wifi");
        if (!script.isEmpty())
            m_device->setTool("/usr/bin/kt-check-wifi", script);
        NetworkController network;
        const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
        network.connectToWifi("a", "b", false);
        QTRY_COMPARE(ended.size(), 1);
        QCOMPARE(ended.at(0).at(0).toBool(), result == NetworkController::Connected);
        QCOMPARE(static_cast<int>(network.wifiResult()), result);
    }

    void hearsTheLastJoinOnly()
    {
        m_device->setTool("/usr/bin/kt-check-wifi",
                          "if [ $1 = second ]; then echo incorrect key; exit; fi\n"
                          "until [ -e $KT_DEVICE_ROOT/tmp/go ]; do sleep 0.01; done; echo connected\n"
                          "touch $KT_DEVICE_ROOT/tmp/gone-$1");
        NetworkController network;
        const QSignalSpy ended(&network, &NetworkController::setWifiStatus);
        network.connectToWifi("first", QString(), false);
        network.afterCommands(&network, [&] { network.connectToWifi("second", QString(), false); });
        QTRY_COMPARE(ended.size(), 1);
        QCOMPARE(ended.at(0).at(0).toBool(), false);
        network.connectToWifi("abandoned", QString(), false);
        network.disconnectWifi();
        network.connectToWifi("left", QString(), false);
        network.afterCommands(&network, [&] { network.disconnectWifi(); });
        QTRY_VERIFY(m_device->calls("kt-network-config").size() == 2);
        m_device->write("/tmp/go", QByteArray());
        QTRY_VERIFY(m_device->exists("/tmp/gone-first") && m_device->exists("/tmp/gone-left"));
        network.connectToWifi("second", QString(), false);
        QTRY_COMPARE(ended.size(), 2);
        QCOMPARE(network.wifiResult(), NetworkController::IncorrectKey);
        QVERIFY(!m_device->exists("/tmp/gone-abandoned"));
    }

private:
    void answer(const char *subCommand, const QByteArray &text)
    {
        m_device->write(answers + QLatin1Char('.') + QLatin1String(subCommand), text);
    }

    std::unique_ptr<TestDevice> m_device;
};

QTEST_GUILESS_MAIN(NetworkControllerTest)
#include "networkcontrollertest.moc"
