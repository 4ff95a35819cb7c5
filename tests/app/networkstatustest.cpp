// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/networkstatus.h"
#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "linklistener.h"
#include "onlyinnamespace.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

#include <memory>

namespace {

using Link = NetworkStatus::Link;

const QString eth0 = "eth0";

const char *const noCable = "red, icon no link, address Disconnected off";
const char *const wiredUp = "icon connected, address 10.77.0.10";
const char *const wifiUp = "tip 10.77.1.10\nVisitors\n64%, icon connected 64, address 10.77.1.10";
const char *const wifiDown = "red, address Disconnected off, icon no link 0";

} // namespace

Q_DECLARE_METATYPE(Link)

#define HEAR_WIRED(expected)                                                                                 \
    QTRY_COMPARE(m_fixture->said.hearWired(), QString(expected));                                            \
    m_fixture->said.takeWired()
#define HEAR_WIRELESS(expected)                                                                              \
    QTRY_COMPARE(m_fixture->said.hearWireless(), QString(expected));                                         \
    m_fixture->said.takeWireless()

/// The two links, on a device whose eth0 is the one of the lab's network namespace. Where the order of steps
/// counts, what the timers call is called directly; everywhere else the timers run fast.
class NetworkStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_fixture = std::make_unique<Fixture>();
        QVERIFY(m_fixture->device.isValid());
        enable(true, true);
    }

    void cleanup() { m_fixture.reset(); }

    void evaluatesTheLinksAtStart_data()
    {
        const TestTable<QByteArray, QByteArray, QByteArray, QByteArray, QString, QString, Link, Link> table(
            "cable", "wiredAddress", "ssid", "wirelessAddress", "wiredSaid", "wirelessSaid", "wired",
            "wireless");
        table.row("wired", "plugged", "10.77.0.10", {}, {}, QString("shown, green, ") + wiredUp, wifiDown,
                  Link::Connected, Link::Absent);
        table.row("wireless", "unplugged", {}, "Visitors", "10.77.1.10", QString("shown, ") + noCable,
                  QString("green, ") + wifiUp, Link::Absent, Link::Connected);
        table.row("address without cable", "unplugged", "10.77.0.10", {}, {},
                  QString("shown, ") + noCable + ", groups", wifiDown, Link::Absent, Link::Absent);
        table.row("no address yet", "plugged", {}, "Visitors", {}, "shown, green, icon link, address  off",
                  "red, icon link 100", Link::Present, Link::Present);
    }

    void evaluatesTheLinksAtStart()
    {
        QFETCH(const QByteArray, ssid);
        QFETCH(const QByteArray, wirelessAddress);
        QFETCH(const QByteArray, wiredAddress);
        QFETCH(const QByteArray, cable);
        QFETCH(const QString, wiredSaid);
        QFETCH(const QString, wirelessSaid);
        setState("cable", cable);
        setState("wired-address", wiredAddress);
        setState("wireless-ssid", ssid);
        setState("wireless-address", wirelessAddress);
        status().initNetworkStatus();
        QCOMPARE(m_fixture->said.hearWired(), QString()); // nobody waits
        HEAR_WIRED(wiredSaid);
        HEAR_WIRELESS(wirelessSaid);
        QTEST(status().wiredState(), "wired");
        QTEST(status().wirelessState(), "wireless");
        QCOMPARE(status().isConnected(eth0), status().wiredState() == Link::Connected);
        QCOMPARE(status().isConnected("wlan0"), status().wirelessState() == Link::Connected);
    }

    void takesTheAddressOffWhileTheCableIsOut_data()
    {
        const TestTable<QString> table("message"); // what a script says when the cable is back
        table.row("nothing", QString());
        for (const char *message : {"link", "no link", "connected"})
            table.row(message, message);
    }

    void takesTheAddressOffWhileTheCableIsOut()
    {
        QFETCH(const QString, message);
        m_fixture->device.write("/lab/live-network", QByteArray());
        const QStringList addresses = {"10.77.0.10 10.77.0.255"};
        status().initNetworkStatus();
        HEAR_WIRED(QString("shown, green, ") + wiredUp);
        QCOMPARE(liveAddresses(), addresses);
        setState("cable", "unplugged");
        status().checkEthernetPlugged();
        HEAR_WIRED(QString(noCable) + ", groups");
        commandsEnded();
        QCOMPARE(liveAddresses(), QStringList());
        status().checkEthernetPlugged();
        HEAR_WIRED(noCable);
        QVERIFY(!status().isConnected(eth0));
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"),
                 QStringList("kt-ip-settings -d eth0 10.77.0.10 24"));
        const QRegularExpression line(R"(\A\d\d:\d\d:\d\d\.\d{3}:::10\.77\.0\.255<2>\n\z)");
        const QString log = QString::fromUtf8(m_fixture->device.read("/tmp/broadcastlog"));
        QVERIFY2(line.match(log).hasMatch(), qPrintable(log));

        m_fixture->device.forgetCalls();
        setState("cable", "plugged");
        // The stand-in knows the address whether or not it is on: a script that says so is believed.
        status().takeMessage(eth0, message);
        m_fixture->said.takeWired();
        if (message == "connected")
            return;
        status().checkEthernetPlugged();
        HEAR_WIRED(QString("green, ") + wiredUp + ", groups");
        QCOMPARE(liveAddresses(), addresses);
        QCOMPARE(status().wiredState(), Link::Connected);
        status().checkEthernetPlugged();
        HEAR_WIRED(QString("green, ") + wiredUp);
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"),
                 QStringList("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255"));
        QCOMPARE(m_fixture->device.calls("kt-check-gateway").size(), 1);
    }

    void believesNoToolThatFailsOnce_data()
    {
        const TestTable<QString> table("fault");
        for (const char *fault : {"garbage", "crash", "exit 3", "hang"})
            table.row(fault, fault);
    }

    void believesNoToolThatFailsOnce()
    {
        QFETCH(const QString, fault);
        const auto set = [this](const QString &now) {
            m_fixture->network.setQueryLimit(now == "hang" ? 500 : TestGroup::waitMs());
            m_fixture->device.setFault("kt-network-config", now);
        };
        status().initNetworkStatus();
        HEAR_WIRED(QString("shown, green, ") + wiredUp);
        for (int time = 0; time < 2; ++time) {
            set(fault);
            status().checkEthernetPlugged();
            plugAsked();
            QCOMPARE(m_fixture->said.takeWired(), QString());
            set("none");
            status().checkEthernetPlugged();
            HEAR_WIRED(QString("green, ") + wiredUp);
        }
        set(fault);
        status().checkEthernetPlugged();
        plugAsked();
        status().checkEthernetPlugged();
        HEAR_WIRED(noCable); // the address stays: no tool says which it is
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"), QStringList());
    }

    void waitsForALateAddress()
    {
        status().setInterval(20);
        setState("wired-address", "");
        associate("");
        status().initNetworkStatus();
        QTRY_COMPARE(status().wirelessState(), Link::Present);
        status().takeWiredApplied(true);
        QTRY_COMPARE(status().wiredState(), Link::Present);
        QTRY_VERIFY(m_fixture->device.calls("kt-network-config").filter("is-wired-linked").size() > 2);
        m_fixture->said.takeWired();
        m_fixture->said.takeWireless();
        associate("10.77.1.10"); // the wireless link is polled beside a wired one without an address
        QTRY_VERIFY(m_fixture->said.hearWireless().startsWith(QString("green, ") + wifiUp));
        QCOMPARE(status().wirelessState(), Link::Connected);
        QCOMPARE(status().wiredState(), Link::Present);
        setState("wired-address", "10.77.0.10");
        QTRY_VERIFY(m_fixture->said.hearWired().contains(QString("green, ") + wiredUp));
        QCOMPARE(status().wiredState(), Link::Connected);
        status().turnOffWifi();
        QCOMPARE(status().wirelessState(), Link::Absent);
    }

    void connectsTheCableThatComesAfterTheStart()
    {
        m_fixture->device.write("/lab/live-network", QByteArray());
        setState("cable", "unplugged");
        setState("wired-address", "");
        status().initNetworkStatus();
        HEAR_WIRED(QString("shown, ") + noCable);
        status().reconnectEthernet();
        plugAsked();
        QCOMPARE(m_fixture->said.takeWired(), QString());
        status().takeMessage(eth0, "link"); // too early: the poll finds no cable
        status().reconnectEthernet();
        HEAR_WIRED(QString("icon link, address  off, shown, shown, ") + noCable);
        setState("cable", "plugged");
        m_fixture->device.forgetCalls();
        status().setInterval(20);
        status().takeMessage(eth0, "link"); // it waits nevertheless
        status().reconnectEthernet();
        QTRY_COMPARE(status().wiredState(), Link::Connected);
        QTRY_VERIFY(m_fixture->said.hearWired().contains(QString("green, ") + wiredUp + ", groups"));
        const QString document = m_fixture->device.path("/var/lib/kt964/config.json");
        QCOMPARE(
            m_fixture->device.calls("kt-network-config").mid(0, 6),
            QStringList({"kt-network-config is-wired-linked A", "kt-network-config set-config A " + document,
                         "kt-network-config disconnect-ethernet A", "kt-network-config connect-ethernet A",
                         "kt-network-config is-wired-connected A", "kt-network-config is-wired-linked A"}));
        m_fixture->said.takeWired();
        setState("cable", "unplugged"); // and is watched from then on
        QTRY_VERIFY(m_fixture->said.hearWired().contains(noCable));
        QTRY_COMPARE(liveAddresses(), QStringList());
        m_fixture->said.takeWired();
        setState("cable", "plugged");
        QTRY_VERIFY(m_fixture->said.hearWired().contains(QString("green, ") + wiredUp + ", groups"));
    }

    void leavesADisabledInterfaceAlone()
    {
        status().setInterval(1);
        enable(false, true);
        setState("cable", "unplugged");
        status().initNetworkStatus();
        QCOMPARE(m_fixture->said.takeWired(), "hidden, address  off");
        QTRY_COMPARE(m_fixture->said.hearWireless(), wifiDown);
        status().takeMessage(eth0, "link");
        status().checkEthernetPlugged();
        status().reconnectEthernet();
        // Disabled while it waits for its cable.
        enable(true, true);
        status().takeWiredApplied(true);
        QTRY_VERIFY(m_fixture->device.calls("kt-network-config").filter("is-wired-linked").size() > 1);
        status().takeWiredApplied(false);
        enable(false, true);
        TestDevice::waitForTools();
        m_fixture->device.forgetCalls();
        setState("cable", "plugged");
        m_fixture->network.isWiredUp(this, [](NetworkController::Reply) {});
        QTRY_COMPARE(m_fixture->device.calls(), QStringList("kt-network-config is-wired-on A"));
        QCOMPARE(status().wiredState(), Link::Absent);
    }

    void doesWhatScriptsSay_data()
    {
        const TestTable<QString, QString, Link, Link> table("wiredSaid", "wirelessSaid", "wired", "wireless");
        // Both links are connected before.
        table.row("eth0 link", "icon link, address  off, shown", {}, Link::Present, Link::Connected);
        table.row("eth0 connected", QString("shown, icon connected, green, groups, ") + wiredUp, {},
                  Link::Connected, Link::Connected);
        table.row("eth0 no link", noCable, {}, Link::Connected, Link::Connected);
        table.row("wlan0 link", {}, "icon link 100", Link::Connected, Link::Present);
        table.row("wlan0 connected", {}, QString("green, ") + wifiUp, Link::Connected, Link::Connected);
        table.row("wlan0 no link", {}, wifiDown, Link::Connected, Link::Absent);
        table.row("eth1 no link", {}, {}, Link::Connected, Link::Connected);
        table.row("eth0 Connected", {}, {}, Link::Connected, Link::Connected);
    }

    void doesWhatScriptsSay()
    {
        QFETCH(const QString, wiredSaid);
        QFETCH(const QString, wirelessSaid);
        const QString tag = QTest::currentDataTag();
        associate("10.77.1.10");
        status().initNetworkStatus();
        QTRY_VERIFY(m_fixture->said.hearWired().endsWith(wiredUp));
        QTRY_VERIFY(m_fixture->said.hearWireless().endsWith(wifiUp));
        m_fixture->said.takeWired();
        m_fixture->said.takeWireless();
        status().takeMessage(tag.section(' ', 0, 0), tag.section(' ', 1));
        HEAR_WIRED(wiredSaid);
        HEAR_WIRELESS(wirelessSaid);
        QTEST(status().wiredState(), "wired");
        QTEST(status().wirelessState(), "wireless");
    }

    void followsAJoin()
    {
        m_fixture->network.connectToWifi("Visitors", QString(), false);
        HEAR_WIRELESS(QString("green, ") + wifiUp);
        m_fixture->network.connectToWifi("Ward 3", "wrong", false);
        HEAR_WIRELESS(wifiDown);
        QCOMPARE(status().wirelessState(), Link::Absent);
    }

    void forgetsASupersededLook()
    {
        m_fixture->device.setFault("kt-network-config", "slow 100");
        associate("10.77.1.10");
        status().takeMessage(eth0, "connected");
        status().setWifiStatus(true);
        status().takeWiredApplied(false);
        status().takeWirelessLeft(true);
        m_fixture->said.takeWired();
        m_fixture->said.takeWireless();
        int replies = 0;
        for (const char *interface : {"eth0", "wlan0"})
            m_fixture->network.getNetworkByInterface(interface, this, [&](bool, const auto &) { ++replies; });
        m_fixture->network.getActualWifi(this, [&](bool, const auto &) { ++replies; });
        QTRY_COMPARE(replies, 3);
        QCOMPARE(m_fixture->said.takeWired() + m_fixture->said.takeWireless(), QString());
        QVERIFY(!status().isConnected(eth0) && !status().isConnected("wlan0"));
    }

    void followsWhatIsApplied()
    {
        status().takeApplied();
        HEAR_WIRED(QString("shown, green, ") + wiredUp);
        HEAR_WIRELESS(wifiDown);
        status().sayAgain(); // for a page that has just been built
        QCOMPARE(m_fixture->said.takeWired(), "address 10.77.0.10, green");
        QCOMPARE(m_fixture->said.takeWireless(), "address Disconnected off, red");
        // An address that was taken off before is not put back into what was applied.
        setState("cable", "unplugged");
        status().checkEthernetPlugged();
        HEAR_WIRED(QString(noCable) + ", groups");
        commandsEnded();
        setState("wired-address", "");
        status().takeWiredApplied(true);
        HEAR_WIRED(QString("shown, ") + noCable);
        setState("cable", "plugged");
        m_fixture->device.forgetCalls();
        status().reconnectEthernet();
        HEAR_WIRED(QString("shown, green, ") + wiredUp + ", groups");
        QCOMPARE(m_fixture->device.calls("kt-ip-settings"), QStringList());
        const QSignalSpy moved(&status(), &NetworkStatus::addressChanged);
        for (const char *address : {"10.77.1.10", "10.78.1.10", "", "10.78.1.10"})
            emit status().wifiAddress(address, *address);
        QCOMPARE(moved.size(), 2);
        m_fixture->said.takeWireless();
        enable(false, false);
        status().takeApplied();
        HEAR_WIRED("hidden, address  off, red");
        HEAR_WIRELESS(wifiDown);
    }

private:
    struct Fixture
    {
        TestDevice device;
        NetworkController network;
        JsonModule configuration{"config.json", true};
        NetworkStatus status{network, configuration};
        LinkListener said{&status};
    };

    NetworkStatus &status() { return m_fixture->status; }
    void enable(bool wired, bool wireless)
    {
        const QJsonObject eth{{"enabled", wired}, {"type", "dhcp"}};
        const QJsonObject wlan{{"enabled", wireless}, {"type", "dhcp"}};
        const QJsonObject interfaces{{"eth", eth}, {"wlan", wlan}};
        m_fixture->configuration.setObject({{"network settings", QJsonObject{{"interfaces", interfaces}}}});
    }
    void setState(const char *name, const QByteArray &content)
    {
        m_fixture->device.setState(QLatin1String(name), content);
    }
    void associate(const char *address)
    {
        setState("wireless-ssid", "Visitors");
        setState("wireless-address", address);
    }
    void commandsEnded()
    {
        bool ended = false;
        m_fixture->network.afterCommands(this, [&ended] { ended = true; });
        QTRY_VERIFY(ended);
    }
    /// The question for the cable that is under way has its reply.
    void plugAsked()
    {
        bool ended = false;
        m_fixture->network.CheckWiredPlugged(this, [&ended](NetworkController::Reply) { ended = true; });
        QTRY_VERIFY(ended);
    }

    std::unique_ptr<Fixture> m_fixture;
};

QTEST_GUILESS_MAIN(NetworkStatusTest)
#include "networkstatustest.moc"
