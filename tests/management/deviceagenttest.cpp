// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/deviceagent.h"
#include "management/devicestatus.h"

#include "lab-peers/qmdserver.h"
#include "testdevice.h"

#include <QJsonDocument>
#include <QNetworkInterface>
#include <QSignalSpy>
#include <QTest>
#include <QTimerEvent>

#include <memory>

namespace {

const QString serial = "7fabc";
const QByteArray configuration = R"({"general settings": {"device name": "Ward 3"}})";

class Agent : public DeviceAgent
{
public:
    using DeviceAgent::DeviceAgent;
    int replies() { return manager().findChildren<QNetworkReply *>().size(); }
};
} // namespace

/// The agent of a device of the test's own, and a server that it finds on the loopback interface.
class DeviceAgentTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        m_device->write("/var/lib/kt964/config.json",
                        R"({"firmware info": {"configuration version": 15},
                        "general settings": {"device name": "Ward 3"}})");
    }

    void cleanup()
    {
        m_agent.reset();
        m_server.reset();
        m_device.reset();
    }

    void checksInAndReports()
    {
        start(true);
        connectAgent();
        const QString mac = QNetworkInterface::interfaceFromName("eth0").hardwareAddress();
        QCOMPARE(QString::fromUtf8(m_server->body("checkin")),
                 QString(R"({"deviceInfo":{"family":"KT","model":"KT964","name":"Ward 3","serial":"7fabc"},)"
                         R"("firmwareInfo":{"configVer":15,"firmwareVer":"1.0.0","receiverVer":"2.0.0"},)"
                         R"("networkInfo":{"WiFiIP":"0.0.0.0","WiFiIPType":"dhcp","WiFiMAC":"",)"
                         R"("ethIP":"10.77.0.10","ethIPType":"dhcp","ethMAC":"%1",)"
                         R"("ethNetMask":"255.255.255.0"}})")
                     .arg(mac));
        QCOMPARE(m_server->body("configuration"), configuration);
        QTimerEvent tick(0);
        QCoreApplication::sendEvent(m_agent.get(), &tick);
        QTRY_COMPARE(m_server->requests().value(2), "PUT heartbeat 200");
        QVERIFY(m_server->body("heartbeat").isEmpty());
    }

    void hasOneRequestOfAKindUnderWay()
    {
        start();
        connectAgent();
        m_server->setMode(QmdServer::Mode::Silent);
        for (int i = 1; i <= 5; ++i) {
            m_agent->heartbeat();
            m_agent->getProfile();
            QTRY_VERIFY(sent("PUT heartbeat 0", i));
            QTRY_COMPARE(m_agent->replies(), 2);
        }
        QTRY_VERIFY(sent("GET profileConfiguration 0"));
        m_agent->enableComunication(false);
        QVERIFY(!m_agent->initConnection());
        QTRY_COMPARE(m_agent->replies(), 0);
        m_agent->enableComunication(true);
        m_server->setMode(QmdServer::Mode::Slow);
        m_server->setDelay(100);
        m_agent->initConnection();
        for (int i = 0; i < 100000; ++i)
            m_agent->getConfiguration();
        QTRY_VERIFY(sent("GET configuration 200", 2) && !m_agent->isBusy());
    }

    void repeatsACheckInUntilTheReply()
    {
        QStringList waits;
        for (int wait = DeviceAgent::firstRepeatMs; waits.size() < 7; wait = DeviceAgent::nextRepeat(wait))
            waits += QString::number(wait / 1000);
        QCOMPARE(waits.join(' '), "30 60 120 240 480 600 600");

        start();
        m_server->setMode(QmdServer::Mode::Silent);
        m_agent->setReplyTime(50);
        m_agent->setFirstRepeat(10);
        m_agent->setURL(m_url);
        m_agent->setDeviceSerial(serial);
        QVERIFY(m_agent->initConnection());
        QTRY_VERIFY(m_server->requests().count("PUT checkin 0") >= 2);
        m_agent->setReplyTime(TestGroup::waitMs());
        m_server->setMode(QmdServer::Mode::Error);
        QTRY_VERIFY(m_server->requests().count("PUT checkin 500") >= 2);
        m_server->setMode(QmdServer::Mode::Normal);
        QTRY_VERIFY(sent("PUT checkin 200") && !m_agent->isBusy());
        QVERIFY(!m_agent->isRepeating());
    }

private:
    void start(bool encrypted = false)
    {
        m_server = std::make_unique<QmdServer>(m_device->path("/lab/qmd"));
        m_server->setEncrypted(encrypted);
        QVERIFY2(m_server->start(QHostAddress::LocalHost, 0), qPrintable(m_server->fault()));
        m_url = QUrl(
            QString("%1://127.0.0.1:%2").arg(encrypted ? "https" : "http").arg(m_server->serverPort()));
        m_agent = std::make_unique<Agent>(m_status);
    }

    bool sent(const QString &request, int times = 1) const
    {
        return m_server->requests().count(request) == times;
    }
    void connectAgent()
    {
        m_agent->setURL(m_url);
        m_agent->setDeviceSerial(serial);
        m_agent->setConfiguration(configuration);
        m_agent->checkProxy();
        QVERIFY(m_agent->initConnection());
        QTRY_VERIFY(sent("PUT checkin 200") && sent("PUT configuration 200"));
        QTRY_COMPARE(m_agent->replies(), 0);
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<QmdServer> m_server;
    DeviceStatus m_status;
    std::unique_ptr<Agent> m_agent;
    QUrl m_url;
};

QTEST_GUILESS_MAIN(DeviceAgentTest)
#include "deviceagenttest.moc"
