// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/unixsignalhandler.h"
#include "programfixture.h"
#include "testtable.h"
#include "update/consoleformat.h"

#include <QLabel>
#include <QNetworkProxy>
#include <QUdpSocket>
#include <QtTest>

#include <csignal>

namespace {

QByteArray message(const char *type, const char *content)
{
    return QJsonDocument(QJsonObject{{"type", type}, {type, QJsonDocument::fromJson(content).object()}})
        .toJson();
}

} // namespace

/// What the controller does with the document at start, and with the messages of device scripts.
class SettingsControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { UnixSignalHandler::install(); }
    void init() { m_device = std::make_unique<TestDevice>(); }

    void writesTheDocumentAtTheFirstStart()
    {
        m_device->setState("wired-type", "static");
        StartedProgram program;
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
        QCOMPARE(program.program.configuration().getDocument().object(), document);
    }

    void doesNothingOnABrokenMessage_data()
    {
        const TestTable<QByteArray> table("message");
        const QByteArray whole = message("dual monitor status", R"({"status": "add"})");
        table.row("missing", {});
        table.row("empty", "");
        table.row("half", whole.left(whole.size() / 2));
        table.row("huge", whole + QByteArray(70000, ' '));
        table.row("not JSON", QByteArray("dual monitor status\0add", 23));
        table.row("array", "[" + whole + "]");
        table.row("content of another kind",
                  R"({"type": "dual monitor status", "dual monitor status": "add"})");
        table.row("unknown word", message("dual monitor status", R"({"status": "Add"})"));
        table.row("unknown type", message("reboot", "{}"));
        table.row("type is no text", R"({"type": ["refresh audio"]})");
    }

    void doesNothingOnABrokenMessage()
    {
        QFETCH(QByteArray, message);
        const Told told = tell({message});
        QVERIFY(told.displays.isEmpty() && told.audio == 0 && told.wired.isEmpty());
    }

    void doesWhatAMessageSays()
    {
        const Told told
            = tell({message("dual monitor status", R"({"status": "add"})"),
                    message("dual monitor status", R"({"status": "remove"})"), message("refresh audio", "{}"),
                    message("network status", R"({"interface": "eth0", "message": "no link"})")});
        QCOMPARE(told.displays, QVariantList({true, false}));
        QCOMPARE(told.audio, 1);
        QCOMPARE(told.wired, "no link");
    }

    void hearsTheSignal()
    {
        m_device->write("/tmp/msg.json", message("refresh audio", "{}"));
        UnixSignalHandler *handler = UnixSignalHandler::instance();
        const QSignalSpy told(handler, &UnixSignalHandler::notifyController);
        {
            StartedProgram former;
            handler->setController(&former.controller);
        }
        ::raise(SIGUSR1); // nobody is there to hear it
        QTRY_COMPARE(told.size(), 1);
        StartedProgram program;
        const QSignalSpy audio(&program.controller, &SettingsController::audioRefreshRequested);
        handler->setController(&program.controller);
        handler->setController(&program.controller);
        ::raise(SIGUSR1);
        QTRY_COMPARE(told.size(), 2);
        QCOMPARE(audio.size(), 1);
    }

    void readsTheProxyAnew()
    {
        StartedProgram program;
        QJsonObject proxy;
        m_device->store({"network settings", "proxy", "port"}, 2);
        emit program.program.session().getProxyParameters(proxy);
        QCOMPARE(proxy.value("port").toInt(), 2);
        m_device->write("/var/lib/kt964/config.json", "{");
        emit program.program.session().getProxyParameters(
            proxy); // or, where the file says nothing, what it said
        QCOMPARE(proxy.value("port").toInt(), 2);
    }

    void putsTheStoredProxyInForce()
    {
        StartedProgram program;
        QVERIFY(!program.controller.setupProxy());
        QJsonObject document = m_device->document();
        const auto store = [&](const char *proxy) {
            const QJsonObject parsed = QJsonDocument::fromJson(proxy).object();
            document.insert("network settings", QJsonObject{{"proxy", parsed}});
            program.program.configuration().setObject(document);
        };
        store(R"({"enabled": true, "address": "p", "port": 3128, "user name": "u", "password": "w"})");
        QVERIFY(!program.controller.setupProxy()); // the change has seen to it
        const QNetworkProxy expected(QNetworkProxy::HttpProxy, "p", 3128, "u", "w");
        QCOMPARE(QNetworkProxy::applicationProxy(), expected);
        store(R"({"enabled": true, "address": "p", "port": 70000})");
        QCOMPARE(QNetworkProxy::applicationProxy().port(), quint16(0));
        store(R"({"enabled": false, "address": "p", "port": 3128})");
        QCOMPARE(QNetworkProxy::applicationProxy(), QNetworkProxy(QNetworkProxy::NoProxy));
    }

    void keepsSilentWhereConsolesAreSwitchedOff()
    {
        StartedProgram(); // writes the document
        for (const bool allowed : {true, false}) {
            m_device->store({"management settings", "corvid console management"}, allowed);
            StartedProgram program;
            const QSignalSpy lists(&program.program.endpoint(), &TerminalServerModule::hasTsFindReplies);
            QUdpSocket console;
            QVERIFY(console.bind(QHostAddress::LocalHost));
            const QByteArray request = ConsoleFormat::request(ConsoleFormat::Command::GetJson);
            // An empty list of servers comes after the request, and is taken in either case.
            for (const QByteArray &datagram : {request, QByteArray(request).replace(12, 1, "\3")})
                console.writeDatagram(datagram, QHostAddress::LocalHost, WireFormat::devicePort);
            QTRY_COMPARE(lists.size(), 1);
            QCOMPARE(console.hasPendingDatagrams(), allowed);
        }
    }

    void watchesTheLinksByItself()
    {
        m_device->setState("cable", "unplugged");
        m_device->setState("wireless-ssid", "Visitors");
        m_device->setState("wireless-address", "");
        StartedProgram program;
        m_device->write("/tmp/msg.json",
                        message("network status", R"({"interface": "wlan0", "message": "link"})"));
        program.controller.getRemoteMessage();
        const auto wiredShows = [&program](const char *colour) {
            return program.part<QLabel>("wiredStatusLabel")->styleSheet().contains(colour);
        };
        QTRY_VERIFY(wiredShows("red"));
        m_device->setState("cable", "plugged");
        m_device->setState("wireless-address", "10.77.1.10");
        const QString connected = "kt-network-config connect-ethernet A";
        QTRY_VERIFY(m_device->calls().contains(connected));
        QTRY_VERIFY(wiredShows("green"));
        QTRY_VERIFY(program.part<QLabel>("wirelessStatusLabel")->toolTip().contains("10.77.1.10"));
        m_device->setState("cable", "unplugged");
        QTRY_VERIFY(wiredShows("red"));
    }

private:
    struct Told
    {
        QVariantList displays;
        int audio = 0;
        QString wired;
    };
    /// What the program makes of messages of the device's scripts.
    Told tell(const QByteArrayList &messages) const
    {
        StartedProgram program;
        QSignalSpy displays(&program.controller, &SettingsController::dualMonitorChanged);
        const QSignalSpy audio(&program.controller, &SettingsController::audioRefreshRequested);
        QSignalSpy wired(&program.program.networkStatus(), &NetworkStatus::wiredStatus);
        for (const QByteArray &message : messages) {
            if (!message.isNull())
                m_device->write("/tmp/msg.json", message);
            program.controller.getRemoteMessage();
        }
        Told told;
        for (const QVariantList &display : displays)
            told.displays += display;
        told.audio = audio.size();
        told.wired = wired.value(0).value(0).toString();
        return told;
    }

    std::unique_ptr<TestDevice> m_device;
};

QTEST_MAIN(SettingsControllerTest)
#include "settingscontrollertest.moc"
