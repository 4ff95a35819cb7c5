// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/keys.h"
#include "device/log.h"
#include "lab-peers/qmdserver.h"
#include "management/deviceagent.h"
#include "programfixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QtTest>

/// The whole window with its controller, and the management server that its document names.
class AgentServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        m_server = std::make_unique<QmdServer>(m_device->path("/lab/qmd"));
        m_server->setEncrypted(false);
        QVERIFY(m_server->start(QHostAddress::LocalHost, 0));
        QJsonObject document = Defaults::document("kt-test", Defaults::networkSettings({}));
        document.insert(Key::management,
                        QJsonObject{{Key::consoleManagement, true},
                                    {Key::qmdManagement, true},
                                    {Key::autodiscoverQmd, false},
                                    {Key::qmdAddress, QString("127.0.0.1:%1").arg(m_server->serverPort())}});
        m_device->setDocument(document);
        m_program = std::make_unique<StartedProgram>();
    }

    void cleanup()
    {
        m_program.reset();
        m_server.reset();
        m_device.reset();
    }

    void connectsOnceTheWindowIsThere()
    {
        QCoreApplication::processEvents();
        QVERIFY(m_server->requests().isEmpty());
        m_program->window.show();
        QTRY_VERIFY(sent("PUT checkin 200", 1) && sent("PUT configuration 200", 1));
        QJsonObject expected = m_device->document();
        expected.remove(Key::audio);
        QCOMPARE(uploaded(), expected);
    }

    void followsTheSettings()
    {
        m_program->window.show();
        QTRY_VERIFY(sent("PUT configuration 200", 1));
        const auto apply = [this](const char *checkBox) {
            m_program->openSettings();
            m_program->click(checkBox);
            m_program->apply();
        };
        apply("consoleManagementCheckBox");
        QTRY_VERIFY(sent("PUT configuration 200", 2));
        QVERIFY(sent("PUT checkin 200", 1));
        QCOMPARE(uploaded().value(Key::management), m_device->stored({Key::management}));

        const quint64 before = static_cast<quint64>(Log::ring().since(0).entries.size());
        apply("qmdManagementCheckBox");
        const auto stopped = [before] {
            const auto lines = Log::ring().since(before).entries;
            return std::any_of(lines.begin(), lines.end(),
                               [](const LogEntry &line) { return line.text == "QMD module stopped"; });
        };
        QTRY_VERIFY(stopped());
        QVERIFY(sent("PUT configuration 200", 2));
        apply("qmdManagementCheckBox");
        QTRY_VERIFY(sent("PUT checkin 200", 2) && sent("PUT configuration 200", 3));
    }

    void carriesOutActions()
    {
        m_program->window.show();
        QTRY_VERIFY(sent("PUT configuration 200", 1));
        m_server->spool().add(
            QString(), "actions",
            "[" + QByteArray(R"({"action": "REBOOT"},{"action": "GET_PROFILE"},)").repeated(50000)
                + R"({"action": "UPDATE_FIRMWARE"},{"action": "REBOOT"}])");
        m_device->forgetCalls();
        m_program->program.agent().agent().heartbeat();
        QTRY_VERIFY(sent("GET profileConfiguration 200", 2));
        TestDevice::waitForTools();
        QCOMPARE(m_device->calls("kt-lulling"), QStringList{"kt-lulling -r"});
        // An update without a URL is started, and fails.
        QVERIFY(!m_program->program.updateModule().ifUpdateIdle());
    }

    void followsAPushedDocument()
    {
        m_program->window.show();
        QTRY_VERIFY(sent("PUT configuration 200", 1));
        const QByteArray document = R"({"data": {"firmware info": {"configuration version": 15},
            "general settings": {"device name": "pushed"}, "network settings": {"DNS": {"dns1": "10.77.0.1"}}}})";
        m_device->forgetCalls();
        m_server->spool().add(QString(), "body", document);
        m_program->program.agent().agent().getConfiguration();
        QTRY_VERIFY(sent("PUT configuration 200", 2));
        const QJsonObject general = m_device->stored({Key::general}).toObject();
        QCOMPARE(general.value(Key::deviceName).toString(), "pushed");
        QCOMPARE(uploaded().value(Key::general).toObject(), general);
        QCOMPARE(m_program->part<QLabel>("deviceNameLabel")->text(), "pushed");
        // What the merge leaves to be done is done without anybody asking for it.
        QTRY_VERIFY(m_device->calls().join(' ').contains("set-config"));
        // The answer to the upload brings the same document again: that is the end of it.
        m_server->spool().add(QString(), "body", document);
        m_program->program.agent().agent().putConfiguration();
        QTRY_VERIFY(sent("PUT configuration 200", 3));
        QCOMPARE(m_device->stored({Key::general}).toObject(), general);
        QVERIFY(sent("PUT configuration 200", 3));
    }

private:
    bool sent(const char *request, int times) const
    {
        return m_server->requests().count(QLatin1String(request)) == times
            && !m_program->program.agent().agent().isBusy();
    }
    QJsonObject uploaded() const { return QJsonDocument::fromJson(m_server->body("configuration")).object(); }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<QmdServer> m_server;
    std::unique_ptr<StartedProgram> m_program;
};

QTEST_MAIN(AgentServiceTest)
#include "agentservicetest.moc"
