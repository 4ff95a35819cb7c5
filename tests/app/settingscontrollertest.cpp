// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"
#include "app/settingscontroller.h"
#include "app/unixsignalhandler.h"
#include "testdevice.h"
#include "testtable.h"

#include <QNetworkProxy>
#include <QtTest>

#include <csignal>
#include <memory>

namespace {

const QString documentPath = "/var/lib/kt964/config.json";
const QString messagePath = "/tmp/msg.json";

/// The program's two big objects. The window searches for servers: in the lab's network namespace only.
struct Program
{
    SettingsApp window;
    SettingsController controller{&window};
};

} // namespace

/// What the controller does with the document at start, and with the messages of device scripts.
class SettingsControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qgetenv("KT_LAB_NAMESPACE") != "inside")
            QSKIP("the window searches for servers in the lab's network namespace only");
        UnixSignalHandler::install();
    }

    void init()
    {
        m_device = std::make_unique<TestDevice>();
        QVERIFY(m_device->isValid());
    }

    void cleanup() { m_device.reset(); }

    void writesTheDocumentAtTheFirstStart()
    {
        m_device->setState("wired-type", "static");
        Program program;
        const QJsonObject document = m_device->document();
        QCOMPARE(document.size(), 17);
        QCOMPARE(document.value("general settings").toObject().value("device name").toString(), "kt964-lab");
        const QJsonObject interfaces
            = document.value("network settings").toObject().value("interfaces").toObject();
        const QJsonObject crosswise = {{"enabled", true},
                                       {"type", "static"},
                                       {"Ip address", "10.77.0.10"},
                                       {"network mask", "10.77.0.1"},
                                       {"default gateway", "255.255.255.0"}};
        QCOMPARE(interfaces.value("eth").toObject(), crosswise);
        // This machine has no wlan0, whatever the device's tool says.
        QCOMPARE(interfaces.value("wlan").toObject().value("enabled"), QJsonValue(false));
        QCOMPARE(program.controller.configuration().getDocument().object(), document);
    }

    void doesNothingOnABrokenMessage_data()
    {
        const TestTable<QByteArray> table("message");
        const QByteArray whole
            = R"({"type": "dual monitor status", "dual monitor status": {"status": "add"}})";
        table.row("missing", {});
        table.row("empty", "");
        table.row("half", whole.left(whole.size() / 2));
        table.row("huge", whole + QByteArray(70000, ' '));
        table.row("not JSON", QByteArray("dual monitor status\0add", 23));
        table.row("array", "[" + whole + "]");
        table.row("no type", R"({"dual monitor status": {"status": "add"}})");
        table.row("content of another kind", R"({"type": "dual monitor status",
                                                               "dual monitor status": "add"})");
        table.row("unknown word", R"({"type": "dual monitor status",
                                                    "dual monitor status": {"status": "Add"}})");
        table.row("unknown type", R"({"type": "reboot", "reboot": {}})");
        table.row("type is no text", R"({"type": ["refresh audio"]})");
    }

    void doesNothingOnABrokenMessage()
    {
        QFETCH(const QByteArray, message);
        Program program;
        const QSignalSpy display(&program.controller, &SettingsController::dualMonitorChanged);
        const QSignalSpy audio(&program.controller, &SettingsController::audioRefreshRequested);
        const QSignalSpy wired(&program.controller.networkStatus(), &NetworkStatus::wiredStatus);
        if (!message.isNull())
            m_device->write(messagePath, message);
        program.controller.getRemoteMessage();
        QCOMPARE(display.size() + audio.size() + wired.size(), 0);
    }

    void doesWhatAMessageSays()
    {
        Program program;
        const QSignalSpy display(&program.controller, &SettingsController::dualMonitorChanged);
        const QSignalSpy audio(&program.controller, &SettingsController::audioRefreshRequested);
        const QSignalSpy wired(&program.controller.networkStatus(), &NetworkStatus::wiredStatus);
        const auto tell = [&](const QByteArray &message) {
            m_device->write(messagePath, message);
            program.controller.getRemoteMessage();
        };
        tell(R"({"type": "dual monitor status", "dual monitor status": {"status": "add"}})");
        tell(R"({"type": "dual monitor status", "dual monitor status": {"status": "remove"}})");
        QCOMPARE(display.size(), 2);
        QCOMPARE(display.at(0).at(0).toBool(), true);
        QCOMPARE(display.at(1).at(0).toBool(), false);
        tell(R"({"type": "refresh audio"})");
        QCOMPARE(audio.size(), 1);
        tell(R"({"type": "network status", "network status": {"interface": "eth0", "message": "no link"}})");
        QCOMPARE(wired.at(0).at(0).toString(), "no link");
    }

    void hearsTheSignal()
    {
        m_device->write(messagePath, R"({"type": "refresh audio"})");
        UnixSignalHandler *handler = UnixSignalHandler::instance();
        const QSignalSpy told(handler, &UnixSignalHandler::notifyController);
        {
            Program former;
            handler->setController(&former.controller);
        }
        ::raise(SIGUSR1); // nobody is there to hear it
        QTRY_COMPARE(told.size(), 1);
        Program program;
        const QSignalSpy audio(&program.controller, &SettingsController::audioRefreshRequested);
        handler->setController(&program.controller);
        handler->setController(&program.controller);
        ::raise(SIGUSR1);
        QTRY_COMPARE(told.size(), 2);
        QCOMPARE(audio.size(), 1);
    }

    void answersTheWindow()
    {
        Program program;
        program.controller.configuration().setJsonString(R"({"network settings": {"proxy": {"port": 1}}})");
        program.controller.configuration().setJsonString(
            R"({"management settings": {"qmd address": "10.1.1.5"}})");
        QCOMPARE(program.controller.setQMDaddress(), "http://10.1.1.5:8080");
        // The proxy is what the file says now.
        m_device->write(documentPath, R"({"network settings": {"proxy": {"port": 2}}})");
        QJsonObject proxy;
        emit program.window.getProxyParameters(proxy);
        QCOMPARE(proxy.value("port").toInt(), 2);
        m_device->write(documentPath, "{");
        emit program.window.getProxyParameters(proxy); // or, where it says nothing, what it said
        QCOMPARE(proxy.value("port").toInt(), 2);
    }

    void putsTheStoredProxyInForce()
    {
        Program program;
        QVERIFY(!program.controller.setupProxy());
        QJsonObject document = m_device->document();
        const auto store = [&](const char *proxy) {
            const QJsonObject parsed = QJsonDocument::fromJson(proxy).object();
            document.insert("network settings", QJsonObject{{"proxy", parsed}});
            program.controller.configuration().setObject(document);
        };
        store(R"({"enabled": true, "address": "p", "port": 3128, "user name": "u", "password": "w"})");
        QVERIFY(program.controller.setupProxy());
        QVERIFY(!program.controller.setupProxy());
        const QNetworkProxy expected(QNetworkProxy::HttpProxy, "p", 3128, "u", "w");
        QCOMPARE(QNetworkProxy::applicationProxy(), expected);
        store(R"({"enabled": true, "address": "p", "port": 70000})");
        QVERIFY(program.controller.setupProxy());
        QCOMPARE(QNetworkProxy::applicationProxy().port(), quint16(0));
        store(R"({"enabled": false, "address": "p", "port": 3128})");
        QVERIFY(program.controller.setupProxy());
        QCOMPARE(QNetworkProxy::applicationProxy(), QNetworkProxy(QNetworkProxy::NoProxy));
    }

private:
    std::unique_ptr<TestDevice> m_device;
};

QTEST_MAIN(SettingsControllerTest)
#include "settingscontrollertest.moc"
