// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/jsonstatus.h"

#include "testdevice.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QNetworkInterface>
#include <QTest>

#include <memory>

/// What the device tells of itself, on a device of the test's own.
class JSONStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void tellsWhatItFinds();
    void tellsTheStartingValues();
    void choosesTheInterface_data();
    void choosesTheInterface();
    void tellsOfASession();

private:
    static QJsonObject part(const char *name)
    {
        return QJsonDocument::fromJson(JSONStatus().get()).object().value(QLatin1String(name)).toObject();
    }
    std::unique_ptr<TestDevice> m_device;
};

void JSONStatusTest::init()
{
    m_device = std::make_unique<TestDevice>();
    QVERIFY(m_device->isValid());
    m_device->write(QStringLiteral("/etc/kt-release"), "[firmware]\nversion=3.1.4\nname=kt\n");
    m_device->write(QStringLiteral("/var/lib/kt964/config.json"),
                    R"({"firmware info": {"configuration version": 15}, "general settings":
        {"device name": "Ward 3", "setup GUI password enabled": true, "setup GUI password hash": "ab"}})");
}

void JSONStatusTest::tellsWhatItFinds()
{
    const QByteArray mac
        = QNetworkInterface::interfaceFromName(QStringLiteral("eth0")).hardwareAddress().toLatin1();
    QCOMPARE(QString::fromUtf8(JSONStatus().get()),
             QString::fromUtf8(
                 R"({"connection info":{"Corvid Servers":[],"status":"disconnected"},)"
                 R"("device info":{"device name":"Ward 3","serial number":"",)"
                 R"("setup GUI password enabled":true,"setup GUI password hash":"ab"},)"
                 R"("firmware info":{"ZMP client version":"N/A","configuration version":15,)"
                 R"("device family":"KT","device model":"KT964","firmware version":"3.1.4"},)"
                 R"("network info":{"IP address":"10.77.0.10","IP type":"dhcp","MAC":")"
                 + mac
                 + R"(","default gateway":"10.77.0.1","interface":"eth0","network mask":"255.255.255.0"}})"));
}

void JSONStatusTest::tellsTheStartingValues()
{
    m_device->removeTool(QStringLiteral("/etc/kt-release"));
    m_device->setFault(QStringLiteral("kt-network-config"), QStringLiteral("garbage"));
    m_device->setFault(QStringLiteral("route"), QStringLiteral("exit 3"));
    m_device->write(QStringLiteral("/var/lib/kt964/config.json"), "{\"general settings\": ");
    const JSONStatus status;
    QCOMPARE(QStringList({status.getFWVersion(), status.getDeviceName(), status.getIpAddress(),
                          status.getWifiIpAddress(), status.getIpNetmask(), status.getGateway(),
                          status.getIPType()})
                 .join(QLatin1Char(' ')),
             QStringLiteral("?.?.? <unknown> 0.0.0.0 0.0.0.0 0.0.0.0 0.0.0.0 dhcp"));
    QCOMPARE(status.getConfigVersion(), 0);
}

void JSONStatusTest::choosesTheInterface_data()
{
    QTest::addColumn<QByteArray>("wired");
    QTest::addColumn<QByteArray>("wireless");
    QTest::addColumn<QString>("shown");
    const QString eth = QStringLiteral("eth0 10.77.0.10 255.255.255.0 dhcp");
    QTest::newRow("wired") << QByteArray("10.77.0.10") << QByteArray() << eth;
    QTest::newRow("both") << QByteArray("10.77.0.10") << QByteArray("10.77.1.10") << eth;
    QTest::newRow("wireless") << QByteArray() << QByteArray("10.77.1.10")
                              << QStringLiteral("wlan0 10.77.1.10 255.255.0.0 static");
}

void JSONStatusTest::choosesTheInterface()
{
    QFETCH(const QByteArray, wired);
    QFETCH(const QByteArray, wireless);
    m_device->setState(QStringLiteral("wired-address"), wired);
    m_device->setState(QStringLiteral("wireless-address"), wireless);
    m_device->setState(QStringLiteral("wireless-netmask"), "255.255.0.0");
    m_device->setState(QStringLiteral("wireless-type"), "static");
    const QJsonObject network = part("network info");
    QStringList told;
    for (const char *key : {"interface", "IP address", "network mask", "IP type"})
        told += network.value(QLatin1String(key)).toString();
    QTEST(told.join(QLatin1Char(' ')), "shown");
}

void JSONStatusTest::tellsOfASession()
{
    const QString path = QStringLiteral("/tmp/connect.json");
    m_device->write(path, R"({"zClient": {"server": {"address": "10.77.0.21"}}})");
    QJsonObject session{{QStringLiteral("status"), QStringLiteral("connected")},
                        {QStringLiteral("Corvid Servers"), QJsonArray({QStringLiteral("10.77.0.21")})}};
    QCOMPARE(part("connection info"), session);
    m_device->write(path, R"({"zClient": {"server": [1)");
    session.insert(QStringLiteral("Corvid Servers"), QJsonArray());
    QCOMPARE(part("connection info"), session);
}

QTEST_GUILESS_MAIN(JSONStatusTest)
#include "jsonstatustest.moc"
