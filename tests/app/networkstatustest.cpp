// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/networkstatus.h"
#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "testdevice.h"

#include <QNetworkInterface>
#include <QRegularExpression>
#include <QTest>

#include <memory>
#include <utility>

namespace {

using Link = NetworkStatus::Link;

const QString eth0 = QStringLiteral("eth0");

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

    QString take() { return std::exchange(m_phrases, QStringList()).join(QStringLiteral(", ")); }

private:
    static QString colour(const QString &image) { return image.section(QLatin1Char('_'), -1).chopped(4); }
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
    void initTestCase();
    void init();
    void cleanup();
    void evaluatesTheLinksAtStart_data();
    void evaluatesTheLinksAtStart();
    void takesTheAddressOffWhileTheCableIsOut();
    void putsNothingBackWhereNothingWas();
    void watchesNoCableWithoutALink();
    void findsTheAddressOnALaterPoll();
    void reconnectsOnceThereIsACable();
    void doesWhatScriptsSay_data();
    void doesWhatScriptsSay();
    void followsAJoin();
    void showsEnabledInterfacesOnly();
    void followsWhatThePageApplies();

private:
    struct Fixture
    {
        TestDevice device;
        NetworkController network;
        JsonModule configuration{QStringLiteral("config.json"), true};
        NetworkStatus status{network, configuration};
        Listener said{&status};
    };

    void setState(const char *name, const char *content)
    {
        m_fixture->device.setState(QLatin1String(name), content);
    }
    void associate(const char *address)
    {
        setState("wireless-ssid", "Visitors");
        setState("wireless-address", address);
    }

    std::unique_ptr<Fixture> m_fixture;
};

void NetworkStatusTest::initTestCase()
{
    if (qgetenv("KT_LAB_NAMESPACE") != "inside")
        QSKIP("the addresses of an interface are changed in the lab's network namespace only");
}

void NetworkStatusTest::init()
{
    m_fixture = std::make_unique<Fixture>();
    QVERIFY(m_fixture->device.isValid());
    m_fixture->device.write(QStringLiteral("/lab/live-network"), QByteArray());
}

void NetworkStatusTest::cleanup()
{
    m_fixture.reset();
}

void NetworkStatusTest::evaluatesTheLinksAtStart_data()
{
    QTest::addColumn<QByteArray>("wiredAddress");
    QTest::addColumn<QByteArray>("ssid");
    QTest::addColumn<QByteArray>("wirelessAddress");
    QTest::addColumn<QString>("said");
    QTest::addColumn<Link>("wired");
    QTest::addColumn<Link>("wireless");
    QTest::newRow("wired")
        << QByteArray("10.77.0.10") << QByteArray() << QByteArray()
        << QStringLiteral("wifi Disconnected off, wireless no link 0, wired connected, eth 10.77.0.10")
        << Link::Connected << Link::Absent;
    QTest::newRow("wireless")
        << QByteArray() << QByteArray("Visitors") << QByteArray("10.77.1.10")
        << QStringLiteral("tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, eth  off")
        << Link::Absent << Link::Connected;
    QTest::newRow("associated") << QByteArray() << QByteArray("Visitors") << QByteArray()
                                << QStringLiteral("wireless link 100, eth  off") << Link::Absent
                                << Link::Present;
}

void NetworkStatusTest::evaluatesTheLinksAtStart()
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

void NetworkStatusTest::takesTheAddressOffWhileTheCableIsOut()
{
    const QStringList addresses = {QStringLiteral("10.77.0.10 10.77.0.255")};
    m_fixture->status.initNetworkStatus();
    m_fixture->status.checkEthernetPlugged();
    m_fixture->said.take();
    m_fixture->device.forgetCalls();
    QCOMPARE(liveAddresses(), addresses);

    setState("cable", "unplugged");
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("groups, eth red, wired no link, eth Disconnected off"));
    QCOMPARE(liveAddresses(), QStringList());
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth red, wired no link, eth Disconnected off"));
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-ip-settings")),
             QStringList(QStringLiteral("kt-ip-settings -d eth0 10.77.0.10 24")));
    const QRegularExpression line(QStringLiteral(R"(\A\d\d:\d\d:\d\d\.\d{3}:::10\.77\.0\.255<2>\n\z)"));
    const QString log = QString::fromUtf8(m_fixture->device.read(QStringLiteral("/tmp/broadcastlog")));
    QVERIFY2(line.match(log).hasMatch(), qPrintable(log));
    QCOMPARE(m_fixture->status.wiredState(), Link::Connected);

    m_fixture->device.forgetCalls();
    setState("cable", "plugged");
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth green, wired connected, eth 10.77.0.10, groups"));
    QCOMPARE(liveAddresses(), addresses);
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth green, wired connected, eth 10.77.0.10"));
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-ip-settings")),
             QStringList(QStringLiteral("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255")));
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-check-gateway")).size(), 1);
}

void NetworkStatusTest::putsNothingBackWhereNothingWas()
{
    m_fixture->status.takeMessage(eth0, QStringLiteral("connected"));
    setState("wired-address", "");
    setState("cable", "unplugged");
    m_fixture->status.checkEthernetPlugged();
    setState("cable", "plugged");
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-ip-settings")), QStringList());
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-check-gateway")).size(), 1);
}

void NetworkStatusTest::watchesNoCableWithoutALink()
{
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->device.calls(), QStringList());
    // With a link that has no address yet, the cable is watched and nothing restored.
    m_fixture->status.takeMessage(eth0, QStringLiteral("link"));
    m_fixture->said.take();
    m_fixture->status.checkEthernetPlugged();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth green, wired link"));
}

void NetworkStatusTest::findsTheAddressOnALaterPoll()
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
             QStringLiteral("tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10"));
    QCOMPARE(m_fixture->status.wirelessState(), Link::Connected);
    m_fixture->status.turnOffWifi();
    m_fixture->status.updateNetworkStatus();
    QCOMPARE(m_fixture->said.take(), QString());
}

void NetworkStatusTest::reconnectsOnceThereIsACable()
{
    const QString question = QStringLiteral("kt-network-config is-wired-linked A");
    setState("cable", "unplugged");
    m_fixture->status.checkPluggedEthernet();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("wired no link, eth Disconnected off"));
    m_fixture->status.reconnectEthernet();
    QCOMPARE(m_fixture->device.calls(), QStringList({question, question}));
    QCOMPARE(m_fixture->said.take(), QString());
    setState("cable", "plugged");
    m_fixture->device.forgetCalls();
    m_fixture->status.reconnectEthernet();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("busy, free"));
    QCOMPARE(m_fixture->device.calls(),
             QStringList({question,
                          QStringLiteral("kt-network-config set-config A ")
                              + m_fixture->device.path(QStringLiteral("/var/lib/kt964/config.json")),
                          QStringLiteral("kt-network-config disconnect-ethernet A"),
                          QStringLiteral("kt-network-config connect-ethernet A")}));
    m_fixture->status.checkPluggedEthernet();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth green"));
}

void NetworkStatusTest::doesWhatScriptsSay_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("said");
    QTest::addColumn<Link>("wired");
    QTest::addColumn<Link>("wireless");
    const auto row
        = [](const char *interface, const char *message, const char *said, Link wired, Link wireless) {
              QTest::addRow("%s %s", interface, message)
                  << QString::fromLatin1(interface) << QString::fromLatin1(message)
                  << QString::fromLatin1(said) << wired << wireless;
          };
    // Both links are connected before.
    row("eth0", "link", "wired link", Link::Present, Link::Connected);
    row("eth0", "connected", "wired connected, eth 10.77.0.10, eth green, groups", Link::Connected,
        Link::Connected);
    row("eth0", "no link", "wired no link, eth red, eth Disconnected off", Link::Connected, Link::Connected);
    row("wlan0", "link", "wireless link 100", Link::Connected, Link::Present);
    row("wlan0", "connected",
        "tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, wifi green", Link::Connected,
        Link::Connected);
    row("wlan0", "no link", "wifi Disconnected off, wireless no link 0, wifi red", Link::Connected,
        Link::Absent);
    row("eth1", "no link", "", Link::Connected, Link::Connected);
    row("eth0", "Connected", "", Link::Connected, Link::Connected);
}

void NetworkStatusTest::doesWhatScriptsSay()
{
    QFETCH(const QString, interface);
    QFETCH(const QString, message);
    associate("10.77.1.10");
    m_fixture->status.initNetworkStatus();
    m_fixture->said.take();
    m_fixture->status.takeMessage(interface, message);
    QTEST(m_fixture->said.take(), "said");
    QTEST(m_fixture->status.wiredState(), "wired");
    QTEST(m_fixture->status.wirelessState(), "wireless");
}

void NetworkStatusTest::followsAJoin()
{
    m_fixture->network.connectToWifi(QStringLiteral("Visitors"), QString(), false);
    QTRY_COMPARE(m_fixture->status.wirelessState(), Link::Connected);
    QCOMPARE(
        m_fixture->said.take(),
        QStringLiteral("tip 10.77.1.10\nVisitors\n64%, wireless connected 64, wifi 10.77.1.10, wifi green"));
    m_fixture->network.connectToWifi(QStringLiteral("Ward 3"), QStringLiteral("wrong"), false);
    QTRY_COMPARE(m_fixture->status.wirelessState(), Link::Absent);
    QCOMPARE(m_fixture->said.take(), QStringLiteral("wifi Disconnected off, wireless no link 0, wifi red"));
}

void NetworkStatusTest::showsEnabledInterfacesOnly()
{
    m_fixture->status.initNetworkIcons();
    QCOMPARE(m_fixture->said.take(), QString());
    m_fixture->configuration.setJsonString(R"({"network settings": {"interfaces": {"eth": {"enabled": true},
                                                                            "wlan": {"enabled": false}}}})");
    m_fixture->status.initNetworkIcons();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("eth green"));
    m_fixture->configuration.setJsonString(
        R"({"network settings": {"interfaces": {"wlan": {"enabled": true}}}})");
    m_fixture->status.initNetworkIcons();
    QCOMPARE(m_fixture->said.take(), QStringLiteral("wifi red"));
}

void NetworkStatusTest::followsWhatThePageApplies()
{
    NetworkStatus &status = m_fixture->status;
    const auto said = [this] {
        return m_fixture->said.take();
    };
    status.takeWiredApplied(true);
    QCOMPARE(said(), QStringLiteral("wired connected, eth 10.77.0.10, eth green"));
    status.sayAgain(); // for a page that has just been built
    QCOMPARE(said(), QStringLiteral("eth 10.77.0.10, wifi  off, eth green, wifi red"));
    setState("wired-address", "");
    status.takeWiredApplied(true);
    QCOMPARE(said(), QStringLiteral("wired link, eth green"));
    // The cable comes back later: what is connected then is what was applied.
    setState("wired-address", "10.77.0.10");
    setState("cable", "unplugged");
    status.checkEthernetPlugged();
    status.takeWiredApplied(true);
    setState("cable", "plugged");
    m_fixture->device.forgetCalls();
    status.reconnectEthernet();
    status.checkEthernetPlugged();
    QCOMPARE(m_fixture->device.calls(QStringLiteral("kt-ip-settings")), QStringList());
    QVERIFY(said().endsWith(QStringLiteral("eth green, wired connected, eth 10.77.0.10, groups")));
    status.takeWiredApplied(false);
    QCOMPARE(said(), QStringLiteral("eth  off, eth red"));
    QCOMPARE(status.wiredState(), Link::Absent);
    status.takeWirelessLeft(true);
    QCOMPARE(said(), QStringLiteral("wifi Disconnected off, wireless no link 0, wifi red"));
}

QTEST_GUILESS_MAIN(NetworkStatusTest)
#include "networkstatustest.moc"
