// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/brokerserver.h"
#include "session/sessionprogram.h"
#include "standin.h"
#include "testtable.h"

#include <QtTest>

#include <csignal>

Q_DECLARE_METATYPE(EndReason)

static const QString User = "jürgen@ward";
static const QString Password = "pä ss=%";

// The whole program, started as the launcher starts it, beside a broker on the loopback interface.
class TestSolvaClient : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_broker = std::make_unique<BrokerServer>();
        m_broker->addUser(User, Password,
                          {{"Ward 3", "10.77.0.21:3390"},
                           {QString::fromUtf8("Büro 桌"), "10.77.0.22"},
                           {"Trap", "/proxy:evil"}});
        QVERIFY2(m_broker->start(QHostAddress(QHostAddress::LocalHost), 0), qPrintable(m_broker->fault()));
    }
    void cleanup() { m_client.reset(); }

    void opensTheDesktop_data()
    {
        const TestTable<QString, QStringList, QByteArrayList> table("desktop", "further", "told");
        table.row("named", QString::fromUtf8("Büro 桌"), {}, QByteArrayList{"/v:10.77.0.22", "/f"});
        table.row("none named", {}, {}, QByteArrayList{"/v:10.77.0.21:3390"});
        table.row("application", "Ward 3",
                  QString("--application=calc --application-dir=C:\\ --use-smsc-sda --sda-position=right")
                      .split(' '),
                  QByteArrayList{"/shell:calc", "/shell-dir:C:\\", "/multimon"});
    }

    void opensTheDesktop()
    {
        QFETCH(QString, desktop);
        QFETCH(QStringList, further);
        QFETCH(QByteArrayList, told);
        const StandIn standIn("exec sleep 60");
        start(desktop, further);
        QTRY_VERIFY(standIn.has("pid"));
        const QByteArrayList arguments = standIn.read("arguments").split('\n');
        for (const QByteArray &argument : told + QByteArrayList{"/u:" + User.toUtf8(), "/from-stdin:force"})
            QVERIFY2(arguments.contains(argument), argument);
        QCOMPARE(standIn.read("input"), Password.toUtf8() + '\n');
        QFile commandLine(QString("/proc/%1/cmdline").arg(m_client->processId()));
        QVERIFY(commandLine.open(QIODevice::ReadOnly));
        const QByteArray seen = commandLine.readAll();
        QVERIFY(seen.contains("--username=") && !seen.contains(Password.toUtf8()));

        signalClient(SIGTERM);
        QTRY_COMPARE(m_client->state(), QProcess::NotRunning);
        QCOMPARE(m_client->exitCode(), int(SessionFailed));
        const QByteArray printed = m_client->readAll();
        QVERIFY(printed.contains("stopped by this device") && !printed.contains(Password.toUtf8()));
    }

    void reportsTheOutcome_data()
    {
        const TestTable<QByteArray, BrokerServer::Mode, QString, QString, EndReason> table(
            "behaviour", "mode", "desktop", "password", "reason");
        const QString ward = "Ward 3";
        const auto row = [&](const char *title, const char *behaviour, BrokerServer::Mode mode,
                             EndReason reason, const QString &desktop, const QString &password) {
            table.row(title, QByteArray(behaviour), mode, desktop, password, reason);
        };
        const auto normal = BrokerServer::Mode::Normal;
        row("log-off", "exit 12", normal, EndReason::Ended, ward, Password);
        row("time limit", "exit 3", normal, EndReason::TimeLimit, ward, Password);
        row("server gone", "exit 147", normal, EndReason::Unreachable, ward, Password);
        row("wrong password", "exit 0", normal, EndReason::LogonRejected, ward, ward);
        row("not offered", "exit 0", normal, EndReason::NotAllowed, "Ward", Password);
        row("option as address", "exit 0", normal, EndReason::BadAddress, "Trap", Password);
        row("no list", "exit 0", BrokerServer::Mode::Empty, EndReason::NotAllowed, ward, Password);
        row("broker's fault", "exit 0", BrokerServer::Mode::Error, EndReason::ServerFault, ward, Password);
        row("cut", "exit 0", BrokerServer::Mode::Cut, EndReason::ServerFault, ward, Password);
        row("10,000", "exit 12", BrokerServer::Mode::Huge, EndReason::Ended, "Desktop 10000", Password);
    }

    void reportsTheOutcome()
    {
        QFETCH(QByteArray, behaviour);
        QFETCH(BrokerServer::Mode, mode);
        QFETCH(QString, desktop);
        QFETCH(QString, password);
        QFETCH(EndReason, reason);
        const StandIn standIn("echo 'a line of it'; " + behaviour);
        m_broker->setMode(mode);
        start(desktop, {}, password);
        QByteArray printed;
        const QByteArray expected = "solva-client: " + reasonText(reason).toUtf8() + '\n';
        QTRY_VERIFY2((printed += m_client->readAll()).contains(expected), printed);
        if (reasonRow(reason).explainedBy != ExplainedBy::Nobody)
            signalClient(SIGTERM); // dismisses the window
        QTRY_COMPARE(m_client->state(), QProcess::NotRunning);
        QCOMPARE(m_client->exitStatus(), QProcess::NormalExit);
        printed += m_client->readAll();
        QVERIFY2((m_client->exitCode() == SessionEnded) == (reasonRow(reason).status == sessionEndedStatus),
                 printed);
        QCOMPARE(printed.contains("xfreerdp: a line of it"), behaviour != "exit 0");
        QVERIFY(!printed.contains(Password.toUtf8()));
    }

    void wrongCalls()
    {
        for (const char *words : {"", "-c", "-c --server=a --sever=b", "-c --server=a --password=geheim\n"}) {
            run(QString::fromLatin1(words).split(' '));
            QTRY_COMPARE(m_client->state(), QProcess::NotRunning);
            QCOMPARE(m_client->exitCode(), int(WrongUsage));
            QVERIFY(!m_client->readAll().contains("geheim"));
        }
    }

    void stopsWhileItAsks()
    {
        m_broker->setMode(BrokerServer::Mode::Slow);
        QSignalSpy connections(m_broker.get(), &QTcpServer::newConnection);
        start(QString(), {});
        QTRY_COMPARE(connections.size(), 1);
        signalClient(SIGTERM);
        QTRY_COMPARE(m_client->state(), QProcess::NotRunning);
        QCOMPARE(m_client->exitCode(), int(SessionFailed));
        QVERIFY(m_client->readAll().contains("before the session began"));
    }

private:
    void start(const QString &desktop, const QStringList &further, const QString &password = Password)
    {
        run(QStringList{"-c", QString("--server=127.0.0.1:%1").arg(m_broker->serverPort()), "--protocol=RDP",
                        QString("--desktop=") + desktop, QString("--username=") + User,
                        QString("--password=") + password, "--experience=", "--keyboard-layout=US"}
            + further);
    }
    void run(const QStringList &arguments)
    {
        m_client = std::make_unique<QProcess>();
        m_client->setProcessChannelMode(QProcess::MergedChannels);
        m_client->start(qEnvironmentVariable("KT_BIN_DIR") + "/solva-client", arguments);
        QVERIFY(m_client->waitForStarted());
    }
    void signalClient(int number) { ::kill(pid_t(m_client->processId()), number); }

    std::unique_ptr<BrokerServer> m_broker;
    std::unique_ptr<QProcess> m_client;
};

QTEST_MAIN(TestSolvaClient)
#include "test_solva_client.moc"
