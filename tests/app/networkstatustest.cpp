// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/networkstatus.h"
#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "onlyinnamespace.h"
#include "testdevice.h"
#include "testtable.h"

#include <QNetworkInterface>
#include <QtTest>

#include <memory>
#include <utility>

namespace {

using Link = NetworkStatus::Link;

const QString eth0 = "eth0";

QStringList liveAddresses()
{
    QStringList addresses;
    for (const auto &entry : QNetworkInterface::interfaceFromName(eth0).addressEntries()) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            addresses += entry.ip().toString() + QLatin1Char(' ') + entry.broadcast().toString();
    }
    return addresses;
}

/// Writes down what is said of the links, a phrase for each signal.
class Listener : public QObject
{
public:
    explicit Listener(const NetworkStatus *status)
    {
        using S = NetworkStatus;
        connect(status, &S::wiredStatus, this, [this](const QString &state) { add("wired %1", state); });
        connect(status, &S::wirelessStatus, this, [this](const QString &state, int signal) {
            add("wireless %1", state + QLatin1Char(' ') + QString::number(signal));
        });
        connect(status, &S::wirelessToolTip, this, [this](const QString &text) { add("tip %1", text); });
        connect(status, &S::ethernetAddress, this,
                [this](const QString &text, bool enabled) { add(enabled ? "eth %1" : "eth %1 off", text); });
        connect(status, &S::wifiAddress, this, [this](const QString &text, bool enabled) {
            add(enabled ? "wifi %1" : "wifi %1 off", text);
        });
        connect(status, &S::ethernetIndicator, this,
                [this](const QString &image) { add("eth %1", colour(image)); });
        connect(status, &S::wifiIndicator, this,
                [this](const QString &image) { add("wifi %1", colour(image)); });
        connect(status, &S::serverGroupsAffected, this, [this] { add("groups%1", QString()); });
        connect(status, &S::busy, this, [this](bool busy) { add(busy ? "busy%1" : "free%1", QString()); });
    }

    QString take() { return std::exchange(m_phrases, QStringList()).join(", "); }

private:
    static QString colour(const QString &image) { return image.section('_', -1).chopped(4); }
    void add(const char *phrase, const QString &value)
    {
        m_phrases += QString::fromLatin1(phrase).arg(value);
    }

    QStringList m_phrases;
};

} // namespace

Q_DECLARE_METATYPE(Link)

/// The two links, on a device whose eth0 is the one of the lab's network namespace. What the timers call is
/// called directly.
class NetworkStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_fixture = std::make_unique<Fixture>();
        QVERIFY(m_fixture->device.isValid());
        m_fixture->device.write("/lab/live-network", QByteArray());
    }

    void cleanup() { m_fixture.reset(); }

    void evaluatesTheLinksAtStart_data()
    {
        const TestTable<QByteArray, QByteArray, QByteArray, QString, Link, Link> table(
            "wiredAddress", "ssid", "wirelessAddress", "said", "wired", "wireless");
        table.row("wired", "10.77.0.10", {}, {},
                  "wifi Disconnected off, wireless no link 0, wired connected, eth 10.77.0.10",
                  Link::Connected, Link::Absent);
        table.row("wireless", {}, "Visitors", "10.77.1.10",
                  "tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, eth  off",
                  Link::Absent, Link::Connected);
        table.row("associated", {}, "Visitors", {}, "wireless link 100, eth  off", Link::Absent,
                  Link::Present);
    }

    void evaluatesTheLinksAtStart()
    {
        QFETCH(const QByteArray, wiredAddress);
        QFETCH(const QByteArray, ssid);
        QFETCH(const QByteArray, wirelessAddress);
        setState("wired-address", wiredAddress);
        setState("wireless-ssid", ssid);
        setState("wireless-address", wirelessAddress);
        m_fixture->status.initNetworkStatus();
        QTEST(m_fixture->said.take(), "said");
        QTEST(m_fixture->status.wiredState(), "wired");
        QTEST(m_fixture->status.wirelessState(), "wireless");
    }

    void takesTheAddressOffWhileTheCableIsOut()
    {
        const QStringList addresses = {"10.77.0.10 10.77.0.255"};
        m_fixture->status.initNetworkStatus();
        checkCable();
        m_fixture->said.take();
        m_fixture->device.forgetCalls();
        QCOMPARE(liveAddresses(), addresses);

        setState("cable", "unplugged");
        checkCable();
        QCOMPARE(m_fixture->said.take(), "groups, eth red, wired no link, eth Disconnected off");
        QCOMPARE(liveAddresses(), QStringList());
        checkCable();
        QCOMPARE(m_fixture->said.take(), "eth red, wired no link, eth Disconnected off");
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"),
                 QStringList("kt-ip-settings -d eth0 10.77.0.10 24"));
        const QRegularExpression line(R"(\A\d\d:\d\d:\d\d\.\d{3}:::10\.77\.0\.255<2>\n\z)");
        const QString log = QString::fromUtf8(m_fixture->device.read("/tmp/broadcastlog"));
        QVERIFY2(line.match(log).hasMatch(), qPrintable(log));
        QCOMPARE(m_fixture->status.wiredState(), Link::Connected);

        m_fixture->device.forgetCalls();
        setState("cable", "plugged");
        checkCable();
        QCOMPARE(m_fixture->said.take(), "eth green, wired connected, eth 10.77.0.10, groups");
        QCOMPARE(liveAddresses(), addresses);
        checkCable();
        QCOMPARE(m_fixture->said.take(), "eth green, wired connected, eth 10.77.0.10");
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"),
                 QStringList("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255"));
        QCOMPARE(m_fixture->device.calls("kt-check-gateway").size(), 1);
    }

    void findsTheAddressOnALaterPoll()
    {
        m_fixture->status.updateNetworkStatus();
        QCOMPARE(m_fixture->device.calls(), QStringList());
        associate("");
        m_fixture->status.initNetworkStatus();
        m_fixture->said.take();
        m_fixture->status.updateNetworkStatus();
        QCOMPARE(m_fixture->said.take(), QString());
        QCOMPARE(m_fixture->status.wirelessState(), Link::Present);
        associate("10.77.1.10");
        m_fixture->status.updateNetworkStatus();
        QCOMPARE(m_fixture->said.take(),
                 "tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10");
        QCOMPARE(m_fixture->status.wirelessState(), Link::Connected);
        m_fixture->status.turnOffWifi();
        m_fixture->status.updateNetworkStatus();
        QCOMPARE(m_fixture->said.take(), QString());
    }

    void reconnectsOnceThereIsACable()
    {
        const QString question = "kt-network-config is-wired-linked A";
        setState("cable", "unplugged");
        m_fixture->status.checkPluggedEthernet();
        QCOMPARE(m_fixture->said.take(), "wired no link, eth Disconnected off");
        m_fixture->status.reconnectEthernet();
        QCOMPARE(m_fixture->device.calls(), QStringList({question, question}));
        QCOMPARE(m_fixture->said.take(), QString());
        setState("cable", "plugged");
        m_fixture->device.forgetCalls();
        m_fixture->status.reconnectEthernet();
        QTRY_COMPARE(
            m_fixture->device.calls(),
            QStringList({question,
                         QString("kt-network-config set-config A ")
                             + m_fixture->device.path("/var/lib/kt964/config.json"),
                         "kt-network-config disconnect-ethernet A", "kt-network-config connect-ethernet A"}));
        m_fixture->status.checkPluggedEthernet();
        QCOMPARE(m_fixture->said.take(), "eth green");
    }

    void doesWhatScriptsSay_data()
    {
        const TestTable<QString, Link, Link> table("said", "wired", "wireless");
        // Both links are connected before.
        table.row("eth0 link", "wired link", Link::Present, Link::Connected);
        table.row("eth0 connected", "wired connected, eth 10.77.0.10, eth green, groups", Link::Connected,
                  Link::Connected);
        table.row("eth0 no link", "wired no link, eth red, eth Disconnected off", Link::Connected,
                  Link::Connected);
        table.row("wlan0 link", "wireless link 100", Link::Connected, Link::Present);
        table.row("wlan0 connected",
                  "tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, wifi green",
                  Link::Connected, Link::Connected);
        table.row("wlan0 no link", "wifi Disconnected off, wireless no link 0, wifi red", Link::Connected,
                  Link::Absent);
        table.row("eth1 no link", "", Link::Connected, Link::Connected);
        table.row("eth0 Connected", "", Link::Connected, Link::Connected);
    }

    void doesWhatScriptsSay()
    {
        const QString tag = QTest::currentDataTag();
        associate("10.77.1.10");
        m_fixture->status.initNetworkStatus();
        m_fixture->said.take();
        m_fixture->status.takeMessage(tag.section(' ', 0, 0), tag.section(' ', 1));
        QTEST(m_fixture->said.take(), "said");
        QTEST(m_fixture->status.wiredState(), "wired");
        QTEST(m_fixture->status.wirelessState(), "wireless");
    }

    void followsAJoin()
    {
        m_fixture->network.connectToWifi("Visitors", QString(), false);
        QTRY_COMPARE(m_fixture->status.wirelessState(), Link::Connected);
        QCOMPARE(m_fixture->said.take(),
                 "tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, wifi green");
        m_fixture->network.connectToWifi("Ward 3", "wrong", false);
        QTRY_COMPARE(m_fixture->status.wirelessState(), Link::Absent);
        QCOMPARE(m_fixture->said.take(), "wifi Disconnected off, wireless no link 0, wifi red");
    }

    void showsEnabledInterfacesOnly()
    {
        m_fixture->status.initNetworkIcons();
        QCOMPARE(m_fixture->said.take(), QString());
        m_fixture->configuration.setJsonString(
            R"({"network settings": {"interfaces": {"eth": {"enabled": true},
                                                                            "wlan": {"enabled": false}}}})");
        m_fixture->status.initNetworkIcons();
        QCOMPARE(m_fixture->said.take(), "eth green");
        m_fixture->configuration.setJsonString(
            R"({"network settings": {"interfaces": {"wlan": {"enabled": true}}}})");
        m_fixture->status.initNetworkIcons();
        QCOMPARE(m_fixture->said.take(), "wifi red");
    }

    void followsWhatThePageApplies()
    {
        NetworkStatus &status = m_fixture->status;
        const auto said = [this] {
            return m_fixture->said.take();
        };
        status.takeWiredApplied(true);
        QCOMPARE(said(), "wired connected, eth 10.77.0.10, eth green");
        status.sayAgain(); // for a page that has just been built
        QCOMPARE(said(), "eth 10.77.0.10, wifi  off, eth green, wifi red");
        setState("wired-address", "");
        status.takeWiredApplied(true);
        QCOMPARE(said(), "wired link, eth green");
        // The cable comes back later: what is connected then is what was applied.
        setState("wired-address", "10.77.0.10");
        setState("cable", "unplugged");
        checkCable();
        status.takeWiredApplied(true);
        setState("cable", "plugged");
        m_fixture->device.forgetCalls();
        status.reconnectEthernet();
        commandsEnded();
        checkCable();
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"), QStringList());
        QVERIFY(said().endsWith("eth green, wired connected, eth 10.77.0.10, groups"));
        status.takeWiredApplied(false);
        QCOMPARE(said(), "eth  off, eth red");
        QCOMPARE(status.wiredState(), Link::Absent);
        status.takeWirelessLeft(true);
        QCOMPARE(said(), "wifi Disconnected off, wireless no link 0, wifi red");
    }

private:
    struct Fixture
    {
        TestDevice device;
        NetworkController network;
        JsonModule configuration{"config.json", true};
        NetworkStatus status{network, configuration};
        Listener said{&status};
    };

    void setState(const char *name, const char *content)
    {
        m_fixture->device.setState(QLatin1String(name), content);
    }
    void commandsEnded()
    {
        bool ended = false;
        m_fixture->network.afterCommands(this, [&ended] { ended = true; });
        QTRY_VERIFY(ended);
    }
    void checkCable()
    {
        m_fixture->status.checkEthernetPlugged();
        commandsEnded();
    }
    void associate(const char *address)
    {
        setState("wireless-ssid", "Visitors");
        setState("wireless-address", address);
    }

    std::unique_ptr<Fixture> m_fixture;
};

QTEST_GUILESS_MAIN(NetworkStatusTest)
#include "networkstatustest.moc"
