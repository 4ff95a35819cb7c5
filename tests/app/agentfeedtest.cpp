// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"
#include "app/settingscontroller.h"
#include "config/defaults.h"
#include "config/keys.h"
#include "device/log.h"
#include "lab-peers/qmdserver.h"
#include "management/deviceagent.h"
#include "testdevice.h"

#include <QCheckBox>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <memory>

/// The whole window with its controller, and the management server that its document names.
class AgentFeedTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void connectsOnceTheWindowIsThere_data();
    void connectsOnceTheWindowIsThere();
    void takesALateOffer();
    void followsTheSettings();
    void carriesOutActions();
    void followsAPushedDocument();

private:
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    bool sent(const char *request, int times) const
    {
        return m_server->requests().count(QLatin1String(request)) == times
            && !m_window->deviceAgent().isBusy();
    }
    QJsonObject uploaded() const
    {
        return QJsonDocument::fromJson(m_server->body(QStringLiteral("configuration"))).object();
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<QmdServer> m_server;
    std::unique_ptr<SettingsApp> m_window;
    std::unique_ptr<SettingsController> m_controller;
};

void AgentFeedTest::init()
{
    m_device = std::make_unique<TestDevice>();
    m_server = std::make_unique<QmdServer>(m_device->path(QStringLiteral("/lab/qmd")));
    m_server->setEncrypted(false);
    QVERIFY(m_server->start(QHostAddress::LocalHost, 0));
    QJsonObject document = Defaults::document(QStringLiteral("kt-test"), Defaults::networkSettings({}));
    document.insert(
        Key::management,
        QJsonObject{{Key::consoleManagement, true},
                    {Key::qmdManagement, true},
                    {Key::autodiscoverQmd, false},
                    {Key::qmdAddress, QStringLiteral("127.0.0.1:%1").arg(m_server->serverPort())}});
    m_device->setDocument(document);
    m_window = std::make_unique<SettingsApp>();
    m_controller = std::make_unique<SettingsController>(m_window.get());
}

void AgentFeedTest::cleanup()
{
    m_controller.reset();
    m_window.reset();
    m_server.reset();
    m_device.reset();
}

void AgentFeedTest::connectsOnceTheWindowIsThere_data()
{
    QTest::addColumn<bool>("painted");
    QTest::newRow("painted") << true;
    QTest::newRow("never painted") << false;
}

void AgentFeedTest::connectsOnceTheWindowIsThere()
{
    QFETCH(const bool, painted);
    QCoreApplication::processEvents();
    QVERIFY(m_server->requests().isEmpty());
    m_window->setVisible(painted);
    QTRY_VERIFY(sent("PUT checkin 200", 1) && sent("PUT configuration 200", 1));
    QJsonObject expected = m_device->document();
    expected.remove(Key::audio);
    QCOMPARE(uploaded(), expected);
}

void AgentFeedTest::takesALateOffer()
{
    m_window->show();
    QTRY_VERIFY(sent("PUT configuration 200", 1));
    QJsonObject document = m_device->document();
    QJsonObject management = document.value(Key::management).toObject();
    const QByteArray address = management.value(Key::qmdAddress).toString().toLatin1();
    management.insert(Key::autodiscoverQmd, true);
    document.insert(Key::management, management);
    m_controller->configuration().setObject(document);
    emit m_controller->networkStatus().wiredStatus(QStringLiteral("no link")); // no offer yet
    m_device->write(QStringLiteral("/tmp/dhcp-options.conf"), "[QMD]\nqmd_address=" + address + "/\n");
    QCoreApplication::processEvents();
    QVERIFY(sent("PUT checkin 200", 1));
    emit m_controller->networkStatus().wiredStatus(QStringLiteral("connected"));
    QTRY_VERIFY(sent("PUT checkin 200", 2) && sent("PUT configuration 200", 2));
}

void AgentFeedTest::followsTheSettings()
{
    m_window->show();
    QTRY_VERIFY(sent("PUT configuration 200", 1));
    const auto apply = [this](const char *checkBox) {
        part<QToolButton>("settingsButton")->click();
        part<QCheckBox>(checkBox)->click();
        part<QPushButton>("applyButton")->click();
    };
    apply("consoleManagementCheckBox");
    QTRY_VERIFY(sent("PUT configuration 200", 2));
    QVERIFY(sent("PUT checkin 200", 1));
    QCOMPARE(uploaded().value(Key::management), m_device->document().value(Key::management));

    const quint64 before = static_cast<quint64>(Log::ring().since(0).entries.size());
    apply("qmdManagementCheckBox");
    const auto stopped = [before] {
        const auto lines = Log::ring().since(before).entries;
        return std::any_of(lines.begin(), lines.end(), [](const LogEntry &line) {
            return line.text == QLatin1String("QMD module stopped");
        });
    };
    QTRY_VERIFY(stopped());
    QVERIFY(sent("PUT configuration 200", 2));
    apply("qmdManagementCheckBox");
    QTRY_VERIFY(sent("PUT checkin 200", 2) && sent("PUT configuration 200", 3));
}

void AgentFeedTest::carriesOutActions()
{
    m_window->show();
    QTRY_VERIFY(sent("PUT configuration 200", 1));
    m_server->spool().add(
        QString(), QStringLiteral("actions"),
        "[" + QByteArray(R"({"action": "REBOOT"},{"action": "GET_PROFILE"},)").repeated(50000)
            + R"({"action": "UPDATE_FIRMWARE"},{"action": "REBOOT"}])");
    m_device->forgetCalls();
    m_window->deviceAgent().heartbeat();
    QTRY_VERIFY(sent("GET profileConfiguration 200", 2));
    QCOMPARE(m_device->calls(QStringLiteral("kt-lulling")), QStringList{QStringLiteral("kt-lulling -r")});
    QVERIFY(!m_window->updateModule().ifUpdateIdle()); // an update without a URL is started, and fails
}

void AgentFeedTest::followsAPushedDocument()
{
    m_window->show();
    QTRY_VERIFY(sent("PUT configuration 200", 1));
    const QByteArray document = R"({"data": {"firmware info": {"configuration version": 15},
        "general settings": {"device name": "pushed"}, "network settings": {"DNS": {"dns1": "10.77.0.1"}}}})";
    m_device->forgetCalls();
    m_server->spool().add(QString(), QStringLiteral("body"), document);
    m_window->deviceAgent().getConfiguration();
    QTRY_VERIFY(sent("PUT configuration 200", 2));
    const QJsonObject general = m_device->document().value(Key::general).toObject();
    QCOMPARE(general.value(Key::deviceName).toString(), QStringLiteral("pushed"));
    QCOMPARE(uploaded().value(Key::general).toObject(), general);
    QCOMPARE(part<QLabel>("deviceNameLabel")->text(), QStringLiteral("pushed"));
    // What the merge leaves to be done is done without anybody asking for it.
    QTRY_VERIFY(m_device->calls().join(QLatin1Char(' ')).contains(QLatin1String("set-config")));
    // The answer to the upload brings the same document again: that is the end of it.
    m_server->spool().add(QString(), QStringLiteral("body"), document);
    m_window->deviceAgent().putConfiguration();
    QTRY_VERIFY(sent("PUT configuration 200", 3));
    for (const char *wrong : {R"({"data": {"firmware info": 1}})", R"({"data": {"general settings": 1}})"})
        m_server->spool().add(QString(), QStringLiteral("body"), wrong);
    for (int i = 2; i <= 3; ++i) {
        m_window->deviceAgent().getConfiguration();
        QTRY_VERIFY(sent("GET configuration 200", i));
    }
    QCOMPARE(m_device->document().value(Key::general).toObject(), general);
    QVERIFY(sent("PUT configuration 200", 3));
}

QTEST_MAIN(AgentFeedTest)
#include "agentfeedtest.moc"
