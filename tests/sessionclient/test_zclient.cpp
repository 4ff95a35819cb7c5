// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/reasonwindow.h"
#include "standin.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

#include <csignal>

static const char Password[] = "pä ss";
static const QString Marker = QStringLiteral(":<FAIL>");

static QJsonObject statusOf(const StandIn &standIn)
{
    return QJsonDocument::fromJson(standIn.read("connect.json.status")).object();
}

// The whole program, started as the launcher starts it.
class TestZClient : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFile::exists(qEnvironmentVariable("KT_BIN_DIR") + QStringLiteral("/zClient")),
                 "build zClient first");
    }
    void cleanup() { qunsetenv("KT_DEVICE_ROOT"); }

    void reportsTheOutcome_data()
    {
        QTest::addColumn<QByteArray>("behaviour");
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<bool>("success");
        QTest::addColumn<bool>("marked");
        const QByteArray host("ts1");
        QTest::newRow("log-off") << QByteArray("exit 12") << host << true << false;
        QTest::newRow("administrator") << QByteArray("exit 1") << host << true << false;
        QTest::newRow("name not found") << QByteArray("exit 140") << host << false << false;
        QTest::newRow("forged marker") << QByteArray("echo ':<FAIL>'; exit 147") << host << false << false;
        QTest::newRow("wrong password") << QByteArray("cat input; exit 154") << host << false << true;
        QTest::newRow("killed") << QByteArray("kill -KILL $$") << host << false << true;
        QTest::newRow("option as address") << QByteArray("exit 0") << QByteArray("-v") << false << false;
        QTest::newRow("asks again") << QByteArray("read answer || exit 134") << host << false << true;
        QTest::newRow("bad file") << QByteArray("exit 0") << QByteArray("a\\nb") << false << true;
    }

    void reportsTheOutcome()
    {
        QFETCH(QByteArray, behaviour);
        QFETCH(QByteArray, address);
        QFETCH(bool, success);
        const StandIn standIn("echo run >> runs; " + behaviour);
        start(standIn, address);
        QVERIFY(m_client->waitForFinished(10000));
        const QJsonObject status = statusOf(standIn);
        QCOMPARE(status.value(QStringLiteral("status")).toInt() == 6, success);
        QCOMPARE(m_client->exitCode(), success ? 0 : 1);
        QTEST(status.value(QStringLiteral("log")).toArray().contains(Marker), "marked");
        QCOMPARE(standIn.read("runs"), QByteArray(address == "ts1" ? "run\n" : ""));
        for (const QByteArray &open :
             {standIn.read("connect.json.status"), standIn.read("arguments"), m_client->readAll()})
            QVERIFY(!open.contains(Password));
    }

    void explainsUntilDismissed()
    {
        const StandIn standIn("exit 135");
        start(standIn, "ts1", false);
        QTRY_VERIFY(standIn.has("connect.json.status")); // on record before anybody reads the window
        QCOMPARE(statusOf(standIn).value(QStringLiteral("status")).toInt(),
                 reasonRow(EndReason::AccountLocked).status);
        QVERIFY(!m_client->waitForFinished(300));
        signalClient(SIGTERM);
        QVERIFY(m_client->waitForFinished(10000));
        QCOMPARE(m_client->exitStatus(), QProcess::NormalExit);
    }

    void refreshMovesTheSound()
    {
        const StandIn standIn("exec sleep 60");
        const QTemporaryDir root;
        qputenv("KT_DEVICE_ROOT", QFile::encodeName(root.path()));
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("var/lib/kt964")));
        const auto choose = [&root](const char *number) {
            QFile file(root.filePath(QStringLiteral("var/lib/kt964/config.json")));
            return file.open(QIODevice::WriteOnly)
                && file.write("{\"audio settings\": {\"output device\": {\"device number\": \""
                              + QByteArray(number) + "\"}}}");
        };
        QVERIFY(choose("0,3"));
        start(standIn);
        QTRY_VERIFY(standIn.has("pid"));
        QVERIFY(standIn.read("arguments").contains("/sound:sys:alsa,dev:kt_session\n"));
        QFile definition(QString::fromUtf8(standIn.read("alsa").trimmed().split(':').last()));
        QVERIFY(definition.open(QIODevice::ReadOnly) && definition.readAll().contains("\"hw:0,3\""));
        QVERIFY(choose("1,0"));
        QFile name(QStringLiteral("/proc/%1/comm").arg(m_client->processId()));
        QVERIFY(name.open(QIODevice::ReadOnly) && name.readAll() == "zClient.bin\n");
        signalClient(SIGUSR1);
        QTRY_VERIFY((definition.close(), definition.open(QIODevice::ReadOnly))
                    && definition.readAll().contains("\"hw:1,0\""));
        signalClient(SIGTERM);
        QVERIFY(m_client->waitForFinished(10000));
        QVERIFY(!definition.exists());
    }

    void endsTheChildToo_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("asked to stop") << SIGINT;
        QTest::newRow("killed") << SIGKILL;
    }

    void endsTheChildToo()
    {
        QFETCH(int, number);
        const StandIn standIn("exec sleep 60");
        start(standIn, "ts1", false);
        QTRY_VERIFY(standIn.has("pid"));
        QCOMPARE(standIn.read("input"), QByteArray(Password) + '\n');
        signalClient(number);
        QVERIFY(m_client->waitForFinished(10000));
        const int status = number == SIGKILL ? 0 : reasonRow(EndReason::Stopped).status;
        QCOMPARE(statusOf(standIn).value(QStringLiteral("status")).toInt(), status);
        const QString process = QStringLiteral("/proc/%1/cmdline").arg(standIn.read("pid").toInt());
        const auto commandLine = [&process] { // a zombie has none
            QFile file(process);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QTRY_COMPARE(commandLine(), QByteArray());
    }

    void statusThatCannotBeWritten()
    {
        const StandIn standIn("exit 12");
        QVERIFY(QDir().mkpath(standIn.path("connect.json.status/in the way")));
        start(standIn);
        QVERIFY(m_client->waitForFinished(10000));
        QCOMPARE(m_client->exitCode(), 3);
        QVERIFY(m_client->readAll().contains("cannot write the status"));
    }

    void windowCountsDownAndCloses()
    {
        ReasonWindow window(
            {EndReason::LogonRejected, QStringLiteral("xfreerdp ended with <b>exit</b> code 134"), {}});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(window.findChild<QLabel *>(QStringLiteral("reasonLabel"))
                    ->text()
                    .contains(QStringLiteral("rejected")));
        auto *timer = window.findChild<QTimer *>(QStringLiteral("closeTimer"));
        QVERIFY(timer != nullptr && timer->isActive());
        timer->setInterval(1);
        QTRY_VERIFY(!window.isVisible());

        ReasonWindow second({EndReason::LogonRejected, QString(), {}});
        second.show();
        QTest::mouseClick(second.findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
        QVERIFY(!second.isVisible());
    }

private:
    void start(const StandIn &standIn, const QByteArray &address = "ts1", bool inGroup = true)
    {
        QFile sample(QFINDTESTDATA("data/connect.json"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        QByteArray document = sample.readAll().replace("ts1.example", address);
        if (!inGroup)
            document.replace("\"auto_disconnect\": true", "\"auto_disconnect\": false");
        QVERIFY(standIn.write("connect.json", document));
        m_client = std::make_unique<QProcess>();
        m_client->setProcessChannelMode(QProcess::MergedChannels);
        m_client->start(qEnvironmentVariable("KT_BIN_DIR") + QStringLiteral("/zClient"),
                        {QStringLiteral("-x"), standIn.path("connect.json")});
        QVERIFY(m_client->waitForStarted());
    }
    void signalClient(int number) { ::kill(pid_t(m_client->processId()), number); }

    std::unique_ptr<QProcess> m_client;
};

QTEST_MAIN(TestZClient)
#include "test_zclient.moc"
