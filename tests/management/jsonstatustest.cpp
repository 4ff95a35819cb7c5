// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/devicestatus.h"

#include "testdevice.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QNetworkInterface>
#include <QTest>

#include <memory>
#include <optional>

/// What the device tells of itself, on a device of the test's own.
class JSONStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        QVERIFY(m_device->isValid());
        m_device->write("/etc/kt-release", "[firmware]\nversion=3.1.4\nname=kt\n");
        m_device->write("/var/lib/kt964/config.json",
                        R"({"firmware info": {"configuration version": 15}, "general settings":
        {"device name": "Ward 3", "setup GUI password enabled": true, "setup GUI password hash": "ab"}})");
    }

    void tellsWhatItFinds()
    {
        const QByteArray mac = QNetworkInterface::interfaceFromName("eth0").hardwareAddress().toLatin1();
        QCOMPARE(
            QString::fromUtf8(status().get()),
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

    void tellsTheStartingValues()
    {
        m_device->removeTool("/etc/kt-release");
        m_device->setFault("kt-network-config", "garbage");
        m_device->setFault("route", "exit 3");
        m_device->write("/var/lib/kt964/config.json", "{\"general settings\": ");
        const JSONStatus status = this->status();
        QCOMPARE(QStringList({status.getFWVersion(), status.getDeviceName(), status.getIpAddress(),
                              status.getWifiIpAddress(), status.getIpNetmask(), status.getGateway(),
                              status.getIPType()})
                     .join(' '),
                 "?.?.? <unknown> 0.0.0.0 0.0.0.0 0.0.0.0 0.0.0.0 dhcp");
        QCOMPARE(status.getConfigVersion(), 0);
    }

    void tellsOfASession()
    {
        const QString path = "/tmp/connect.json";
        const auto told = [this] {
            const QJsonDocument document = QJsonDocument::fromJson(status().get());
            return document.object().value("connection info").toObject();
        };
        m_device->write(path, R"({"zClient": {"server": {"address": "10.77.0.21"}}})");
        QJsonObject session{{"status", "connected"}, {"Corvid Servers", QJsonArray({"10.77.0.21"})}};
        QCOMPARE(told(), session);
        m_device->write(path, R"({"zClient": {"server": [1)");
        session.insert("Corvid Servers", QJsonArray());
        QCOMPARE(told(), session);
    }

private:
    static JSONStatus status()
    {
        DeviceStatus gatherer;
        std::optional<JSONStatus> found;
        gatherer.request(&gatherer, [&found](const JSONStatus &status) { found = status; });
        const bool replied = QTest::qWaitFor([&found] { return found.has_value(); }, TestGroup::waitMs());
        return replied ? *found : JSONStatus({});
    }
    std::unique_ptr<TestDevice> m_device;
};

QTEST_GUILESS_MAIN(JSONStatusTest)
#include "jsonstatustest.moc"
