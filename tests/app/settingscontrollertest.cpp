// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingsapp.h"
#include "app/settingscontroller.h"
#include "app/unixsignalhandler.h"
#include "testdevice.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTest>

#include <csignal>
#include <memory>

namespace {

const QString documentPath = QStringLiteral("/var/lib/kt964/config.json");
const QString messagePath = QStringLiteral("/tmp/msg.json");

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
    void initTestCase();
    void init();
    void cleanup();
    void writesTheDocumentAtTheFirstStart();
    void doesNothingOnABrokenMessage_data();
    void doesNothingOnABrokenMessage();
    void doesWhatAMessageSays();
    void hearsTheSignal();
    void answersTheWindow();
    void putsTheStoredProxyInForce();

private:
    std::unique_ptr<TestDevice> m_device;
};

void SettingsControllerTest::initTestCase()
{
    if (qgetenv("KT_LAB_NAMESPACE") != "inside")
        QSKIP("the window searches for servers in the lab's network namespace only");
    UnixSignalHandler::install();
}

void SettingsControllerTest::init()
{
    m_device = std::make_unique<TestDevice>();
    QVERIFY(m_device->isValid());
}

void SettingsControllerTest::cleanup()
{
    m_device.reset();
}

void SettingsControllerTest::writesTheDocumentAtTheFirstStart()
{
    m_device->setState(QStringLiteral("wired-type"), "static");
    Program program;
    const QJsonObject document = m_device->document();
    QCOMPARE(document.size(), 17);
    QCOMPARE(document.value(QStringLiteral("general settings"))
                 .toObject()
                 .value(QStringLiteral("device name"))
                 .toString(),
             QStringLiteral("kt964-lab"));
    const QJsonObject interfaces = document.value(QStringLiteral("network settings"))
                                       .toObject()
                                       .value(QStringLiteral("interfaces"))
                                       .toObject();
    const QJsonObject crosswise = {{QStringLiteral("enabled"), true},
                                   {QStringLiteral("type"), QStringLiteral("static")},
                                   {QStringLiteral("Ip address"), QStringLiteral("10.77.0.10")},
                                   {QStringLiteral("network mask"), QStringLiteral("10.77.0.1")},
                                   {QStringLiteral("default gateway"), QStringLiteral("255.255.255.0")}};
    QCOMPARE(interfaces.value(QStringLiteral("eth")).toObject(), crosswise);
    // This machine has no wlan0, whatever the device's tool says.
    QCOMPARE(interfaces.value(QStringLiteral("wlan")).toObject().value(QStringLiteral("enabled")),
             QJsonValue(false));
    QCOMPARE(program.controller.configuration().getDocument().object(), document);
}

void SettingsControllerTest::doesNothingOnABrokenMessage_data()
{
    QTest::addColumn<QByteArray>("message");
    const QByteArray whole = R"({"type": "dual monitor status", "dual monitor status": {"status": "add"}})";
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("half") << whole.left(whole.size() / 2);
    QTest::newRow("huge") << whole + QByteArray(70000, ' ');
    QTest::newRow("not JSON") << QByteArray("dual monitor status\0add", 23);
    QTest::newRow("array") << "[" + whole + "]";
    QTest::newRow("no type") << QByteArray(R"({"dual monitor status": {"status": "add"}})");
    QTest::newRow("content of another kind") << QByteArray(R"({"type": "dual monitor status",
                                                               "dual monitor status": "add"})");
    QTest::newRow("unknown word") << QByteArray(R"({"type": "dual monitor status",
                                                    "dual monitor status": {"status": "Add"}})");
    QTest::newRow("unknown type") << QByteArray(R"({"type": "reboot", "reboot": {}})");
    QTest::newRow("type is no text") << QByteArray(R"({"type": ["refresh audio"]})");
}

void SettingsControllerTest::doesNothingOnABrokenMessage()
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

void SettingsControllerTest::doesWhatAMessageSays()
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
    QCOMPARE(wired.at(0).at(0).toString(), QStringLiteral("no link"));
}

void SettingsControllerTest::hearsTheSignal()
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

void SettingsControllerTest::answersTheWindow()
{
    Program program;
    program.controller.configuration().setJsonString(R"({"network settings": {"proxy": {"port": 1}},
        "display settings": {"secondary": {"position": "left", "resolution": "800x600"}}})");
    QString resolution;
    int atLeft = -1;
    int bottomAligned = -1;
    emit program.window.secondaryMonitorParameters(resolution, atLeft, bottomAligned);
    QCOMPARE(resolution, QStringLiteral("800x600"));
    QCOMPARE(atLeft, 1);
    QCOMPARE(bottomAligned, 0);
    program.controller.configuration().setJsonString(
        R"({"management settings": {"qmd address": "10.1.1.5"}})");
    QCOMPARE(program.controller.setQMDaddress(), QStringLiteral("http://10.1.1.5:8080"));
    // The proxy is what the file says now.
    m_device->write(documentPath, R"({"network settings": {"proxy": {"port": 2}}})");
    QJsonObject proxy;
    emit program.window.getProxyParameters(proxy);
    QCOMPARE(proxy.value(QStringLiteral("port")).toInt(), 2);
    m_device->write(documentPath, "{");
    emit program.window.getProxyParameters(proxy); // or, where it says nothing, what it said
    QCOMPARE(proxy.value(QStringLiteral("port")).toInt(), 2);
}

void SettingsControllerTest::putsTheStoredProxyInForce()
{
    Program program;
    QVERIFY(!program.controller.setupProxy());
    QJsonObject document = m_device->document();
    const auto store = [&](const char *proxy) {
        const QJsonObject parsed = QJsonDocument::fromJson(proxy).object();
        document.insert(QStringLiteral("network settings"), QJsonObject{{QStringLiteral("proxy"), parsed}});
        program.controller.configuration().setObject(document);
    };
    store(R"({"enabled": true, "address": "p", "port": 3128, "user name": "u", "password": "w"})");
    QVERIFY(program.controller.setupProxy());
    QVERIFY(!program.controller.setupProxy());
    const QNetworkProxy expected(QNetworkProxy::HttpProxy, QStringLiteral("p"), 3128, QStringLiteral("u"),
                                 QStringLiteral("w"));
    QCOMPARE(QNetworkProxy::applicationProxy(), expected);
    store(R"({"enabled": true, "address": "p", "port": 70000})");
    QVERIFY(program.controller.setupProxy());
    QCOMPARE(QNetworkProxy::applicationProxy().port(), quint16(0));
    store(R"({"enabled": false, "address": "p", "port": 3128})");
    QVERIFY(program.controller.setupProxy());
    QCOMPARE(QNetworkProxy::applicationProxy(), QNetworkProxy(QNetworkProxy::NoProxy));
}

QTEST_MAIN(SettingsControllerTest)
#include "settingscontrollertest.moc"
