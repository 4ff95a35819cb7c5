// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/joinverdict.h"
#include "network-tools/kernelnetwork.h"
#include "network-tools/leaseoptions.h"
#include "network-tools/profile.h"
#include "network-tools/wireless.h"

#include <QJsonDocument>
#include <QtTest>

using NetworkManager::AccessPoint;
using NetworkManager::Device;

namespace {

QJsonObject object(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text).replace('\'', '"')).object();
}

/// "key=value" of a setting, sorted, without the value of what is no text, list or truth.
QString described(const QVariantMap &setting)
{
    QStringList words;
    for (auto entry = setting.begin(); entry != setting.end(); ++entry) {
        const bool isList = entry.value().type() == QVariant::StringList;
        words += entry.key() + '='
            + (isList ? entry.value().toStringList().join('+') : entry.value().toString());
    }
    return words.join(' ');
}

} // namespace

Q_DECLARE_METATYPE(Activation::Outcome::End)

class NetworkProfileTest : public QObject
{
    Q_OBJECT

private slots:
    void readsAddresses_data();
    void readsAddresses();
    void makesSecuritySettings_data();
    void makesSecuritySettings();
    void choosesTheProtocolOfTheKey();
    void tellsHowAJoinEnded_data();
    void tellsHowAJoinEnded();
    void listsEachNetworkOnce();
    void readsTheManagementAddress_data();
    void readsTheManagementAddress();
    void findsTheGatewayOfAnInterface();
};

void NetworkProfileTest::readsAddresses_data()
{
    QTest::addColumn<QJsonObject>("interface");
    QTest::addColumn<QString>("ipv4");

    QTest::newRow("DHCP") << object("{'type': 'dhcp', 'IP address': '10.0.0.5'}")
                          << "dhcp-timeout=2147483647 method=auto";
    QTest::newRow("static") << object("{'type': 'static', 'IP address': '10.0.0.5',"
                                      "'network mask': '255.255.255.0', 'default gateway': '10.0.0.1'}")
                            << "10.0.0.5/24 via 10.0.0.1";
    QTest::newRow("as made from the live interface")
        << object("{'type': 'static', 'Ip address': '10.0.0.5',"
                  "'network mask': '10.0.0.1', 'default gateway': '255.255.0.0'}")
        << "10.0.0.5/16 via 10.0.0.1";
    QTest::newRow("no gateway") << object("{'type': 'static', 'IP address': '10.0.0.5',"
                                          "'network mask': '255.255.255.0', 'default gateway': ''}")
                                << "10.0.0.5/24 via ";
    QTest::newRow("no address") << object("{'type': 'static', 'network mask': '255.255.255.0'}") << "";
    QTest::newRow("no mask") << object(
        "{'type': 'static', 'IP address': '10.0.0.5', 'network mask': '255.0.255.0'}")
                             << "";
    QTest::newRow("gateway is no address")
        << object("{'type': 'static', 'IP address': '10.0.0.5',"
                  "'network mask': '255.255.255.0', 'default gateway': 'router'}")
        << "";
}

void NetworkProfileTest::readsAddresses()
{
    QFETCH(QJsonObject, interface);
    const std::optional<Addressing> read = Addressing::fromDocument(interface);
    QString text;
    if (read) {
        // There and back, as a later join finds it.
        const Addressing again = Addressing::fromProfile(read->toProfile());
        text = again.isStatic
            ? QStringLiteral("%1/%2 via %3").arg(again.address).arg(again.prefixLength).arg(again.gateway)
            : described(read->toProfile());
    }
    QTEST(text, "ipv4");
}

void NetworkProfileTest::makesSecuritySettings_data()
{
    QTest::addColumn<QJsonObject>("wlan");
    QTest::addColumn<QString>("security");
    QTest::addColumn<QString>("enterprise");

    QTest::newRow("open") << object("{'ssid': 'Ward', 'security': 'open', 'passphrase': 'unused-one'}") << ""
                          << "";
    QTest::newRow("personal") << object("{'ssid': 'Ward', 'security': 'personal', 'passphrase': 'secret-1'}")
                              << "key-mgmt=wpa-psk psk=secret-1"
                              << "";
    QTest::newRow("old cipher") << object("{'ssid': 'Ward', 'security': 'personal', 'passphrase': 'secret-1',"
                                          "'encryption': 'tkip', 'advanced security': 'wpa'}")
                                << "key-mgmt=wpa-psk pairwise=tkip proto=wpa psk=secret-1"
                                << "";
    QTest::newRow("PEAP") << object(
        "{'ssid': 'Ward', 'security': 'enterprise', 'authentication method': 'peap',"
        "'user name': 'nurse', 'user password': 'pw', 'ca certificate': '/ca.pem',"
        "'encryption': 'ccmp', 'advanced security': 'wpa2'}")
                          << "key-mgmt=wpa-eap pairwise=ccmp proto=rsn"
                          << "ca-cert=CA eap=peap identity=nurse password=pw phase2-auth=mschapv2";
    QTest::newRow("TTLS") << object(
        "{'ssid': 'Ward', 'security': 'enterprise', 'authentication method': 'ttls',"
        "'user name': 'nurse', 'user password': 'pw', 'ca certificate': '/ca.pem'}")
                          << "key-mgmt=wpa-eap"
                          << "ca-cert=CA eap=ttls identity=nurse password=pw phase2-auth=pap";
    QTest::newRow("TTLS, any server")
        << object("{'ssid': 'Ward', 'security': 'enterprise', 'authentication method': 'ttls',"
                  "'user name': 'nurse', 'user password': 'pw'}")
        << "key-mgmt=wpa-eap"
        << "eap=ttls identity=nurse password=pw phase2-auth=mschapv2";
    QTest::newRow("TLS") << object(
        "{'ssid': 'Ward', 'security': 'enterprise', 'authentication method': 'tls',"
        "'user name': 'nurse', 'user password': 'unused', 'pkcs12 certificate': 'me',"
        "'pkcs12 password': 'key', 'ca certificate': '/ca.pem'}")
                         << "key-mgmt=wpa-eap"
                         << "ca-cert=CA client-cert=P12 eap=tls identity=nurse private-key=P12 "
                            "private-key-password=key";
    QTest::newRow("TLS without a certificate") << object(
        "{'ssid': 'Ward', 'security': 'enterprise', 'authentication method': 'tls', 'user name': 'nurse'}")
                                               << "refused"
                                               << "";
    QTest::newRow("short key") << object("{'ssid': 'Ward', 'security': 'personal', 'passphrase': 'short'}")
                               << "refused"
                               << "";
    QTest::newRow("unknown method") << object(
        "{'ssid': 'Ward', 'security': 'enterprise', 'user name': 'nurse',"
        "'authentication method': 'leap'}")
                                    << "refused"
                                    << "";
}

void NetworkProfileTest::makesSecuritySettings()
{
    QFETCH(QJsonObject, wlan);
    const WifiNetwork network = WifiNetwork::fromDocument(wlan);
    Profile::Certificates certificates;
    if (!network.caCertificate.isEmpty()) {
        QCOMPARE(network.caCertificate, QString("/var/lib/kt964/certificates/cacerts/ca.pem"));
        certificates.authority = "CA";
    }
    if (!network.clientCertificate.isEmpty()) {
        QCOMPARE(network.clientCertificate, QString("/var/lib/kt964/certificates/me.p12"));
        certificates.client = "P12";
    }
    const NMVariantMapMap profile = Profile::wireless(
        network, certificates, Profile::keyManagementFor(network.security, std::nullopt), Addressing(), true);
    const QString security = described(profile.value("802-11-wireless-security"));
    QTEST(network.problem().isEmpty() ? security : QString("refused"), "security");
    if (network.problem().isEmpty())
        QTEST(described(profile.value("802-1x")), "enterprise");
}

void NetworkProfileTest::choosesTheProtocolOfTheKey()
{
    using Security = WifiNetwork::Security;
    const auto chosen = [](Security security, quint32 rsn) {
        return Profile::keyManagementFor(security, Profile::AccessPointFlags{true, 0, rsn});
    };
    QCOMPARE(chosen(Security::Personal, AccessPoint::KeyMgmtSAE), QString("sae"));
    QCOMPARE(chosen(Security::Personal, AccessPoint::KeyMgmtSAE | AccessPoint::KeyMgmtPsk),
             QString("wpa-psk"));
    QCOMPARE(chosen(Security::Open, 0x800), QString("owe"));
    QCOMPARE(chosen(Security::Open, 0), QString());
}

void NetworkProfileTest::tellsHowAJoinEnded_data()
{
    using End = Activation::Outcome::End;
    QTest::addColumn<End>("end");
    QTest::addColumn<int>("reason");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("line");

    const QStringList none;
    const QStringList failure{"completion|failure"};
    QTest::newRow("connected") << End::Connected << 0 << none << int(Device::Activated) << "connected";
    QTest::newRow("wrong key") << End::Failed << int(Device::NoSecretsReason) << none << int(Device::Failed)
                               << "incorrect key";
    QTest::newRow("handshake failed")
        << End::Stopped << 0 << QStringList{"associated", "4way_handshake", "scanning"}
        << int(Device::ConfiguringHardware) << "incorrect key";
    QTest::newRow("access point gone") << End::Failed << int(Device::AuthSupplicantTimeoutReason)
                                       << QStringList{"4way_handshake", "completed", "disconnected"}
                                       << int(Device::Failed) << "network not found";
    QTest::newRow("out of range") << End::Failed << int(Device::SsidNotFound) << none << int(Device::Failed)
                                  << "network not found";
    QTest::newRow("wrong password") << End::Stopped << 0
                                    << (QStringList{"remote certificate verification|success"} + failure)
                                    << int(Device::ConfiguringHardware) << "incorrect key";
    QTest::newRow("server's certificate")
        << End::Stopped << 0
        << (QStringList{"remote certificate verification|unable to get local issuer certificate"} + failure)
        << int(Device::ConfiguringHardware) << "certificate verification failed";
    QTest::newRow("our certificate") << End::Failed << int(Device::AuthSupplicantDisconnectReason)
                                     << (QStringList{"remote TLS alert|unknown CA"} + failure)
                                     << int(Device::Failed) << "certificate verification failed";
    QTest::newRow("another alert") << End::Stopped << 0
                                   << (QStringList{"remote TLS alert|protocol version"} + failure)
                                   << int(Device::ConfiguringHardware) << "incorrect key";
    QTest::newRow("no lease") << End::TimedOut << 0 << QStringList{"completion|success"}
                              << int(Device::ConfiguringIp) << "no address";
    QTest::newRow("silent access point")
        << End::TimedOut << 0 << none << int(Device::ConfiguringHardware) << "network not found";
    QTest::newRow("refused by NetworkManager")
        << End::Refused << 0 << none << int(Device::Disconnected) << "failed";
}

void NetworkProfileTest::tellsHowAJoinEnded()
{
    QFETCH(Activation::Outcome::End, end);
    QFETCH(int, reason);
    QFETCH(QStringList, events);
    QFETCH(int, state);
    JoinNotes notes;
    for (const QString &event : events)
        event.contains('|') ? notes.noteEap(event.section('|', 0, 0), event.section('|', 1))
                            : notes.noteState(event);
    Activation::Outcome outcome;
    outcome.end = end;
    outcome.reason = Device::StateChangeReason(reason);
    const JoinVerdict verdict
        = verdictOf(outcome, notes, WifiNetwork::Security::Enterprise, Device::State(state));
    QTEST(lineOf(verdict), "line");
}

void NetworkProfileTest::listsEachNetworkOnce()
{
    const quint32 psk = AccessPoint::KeyMgmtPsk | AccessPoint::PairCcmp;
    const QJsonArray list = Wireless::list(
        {{"Ward", {true, 0, psk}, 40},
         {"Ward", {true, 0, psk}, 70},
         {"Ward", {true, 0, psk}, 55},
         {"", {false, 0, 0}, 99},
         {"Guests", {false, 0, 0}, 30},
         {"Staff", {true, AccessPoint::PairTkip, AccessPoint::KeyMgmt8021x | AccessPoint::PairCcmp}, 50},
         {"Old", {true, 0, 0}, 10}});
    const QByteArray expected
        = R"([{"authentication":"NONE","pairwise":"","signal strength":30,"ssid":"Guests"},)"
          R"({"authentication":"WEP","pairwise":"","signal strength":10,"ssid":"Old"},)"
          R"({"authentication":"802.1x","pairwise":"TKIP CCMP","signal strength":50,"ssid":"Staff"},)"
          R"({"authentication":"PSK","pairwise":"CCMP","signal strength":70,"ssid":"Ward"}])";
    QCOMPARE(QJsonDocument(list).toJson(QJsonDocument::Compact), expected);
}

void NetworkProfileTest::readsTheManagementAddress_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::addColumn<QString>("address");
    for (const char *usable : {"qmd.example", "10.0.0.5", "qmd.example:8443", "https://qmd.example:8443/"})
        QTest::newRow(usable) << QByteArray(usable) << usable;
    QTest::newRow("ends in zero") << QByteArray("10.0.0.5\0", 9) << "10.0.0.5";
    for (const char *unusable :
         {"", "a b", "qmd\n[QMD]", "ftp://qmd", "user@qmd", "qmd:0", "qmd:65536", "-qmd", "%h"})
        QTest::addRow("not '%s'", unusable) << QByteArray(unusable) << "";
    QTest::newRow("too long") << QByteArray(256, 'a') << "";
}

void NetworkProfileTest::readsTheManagementAddress()
{
    QFETCH(QByteArray, option);
    QTEST(LeaseOptions::managementAddress({{"private_224", QString::fromLatin1(option.toHex(':'))}}),
          "address");
}

void NetworkProfileTest::findsTheGatewayOfAnInterface()
{
    const QByteArray routes
        = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n"
          "wlan0\t00000000\t01014D0A\t0003\t0\t0\t600\t00000000\t0\t0\t0\n"
          "eth0\t00004D0A\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n"
          "eth0\t00000000\t01004D0A\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
          "eth1\t00000000\n";
    QCOMPARE(KernelNetwork::gatewayIn(routes, "eth0"), QString("10.77.0.1"));
    QCOMPARE(KernelNetwork::gatewayIn(routes, "wlan0"), QString("10.77.1.1"));
    QCOMPARE(KernelNetwork::gatewayIn(routes, "eth1"), QString());
}

QTEST_GUILESS_MAIN(NetworkProfileTest)
#include "networkprofiletest.moc"
