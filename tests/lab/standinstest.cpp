// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

#include <csignal>

namespace {

struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray error;
};

Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    process.waitForFinished();
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// A device whose tools are called by command lines: words with blanks in double quotes.
struct LabDevice : TestDevice
{
    Outcome call(const QString &commandLine) const
    {
        QStringList words = QProcess::splitCommand(commandLine);
        return run(path("/usr/bin/" + words.takeFirst()), words);
    }
    /// A sub-command of kt-lab on this device.
    int lab(const QString &commandLine) const
    {
        return run(program(), QProcess::splitCommand(commandLine) + QStringList{"--root", path("")}).status;
    }
    static QString program() { return qEnvironmentVariable("KT_BIN_DIR") + "/kt-lab"; }
};

} // namespace

/// The stand-ins for the device's tools, through the real program: what one call changes, another one
/// answers.
class StandInsTest : public QObject
{
    Q_OBJECT

private slots:
    void sudoRunsStandInsOnly()
    {
        const LabDevice device;
        const QString forbidden = device.path("/tmp/forbidden");
        for (const char *program : {"touch", "/usr/bin/touch", "../../usr/bin/touch"}) {
            const Outcome outcome = device.call(QString("sudo %1 %2").arg(program, forbidden));
            QCOMPARE(outcome.status, 1);
            QCOMPARE(outcome.error, QByteArray("sudo: ") + program + ": command not found\n");
            QVERIFY(!QFile::exists(forbidden));
        }
        device.forgetCalls();
        QCOMPARE(device.call("sudo date -s \"5 Mar 2024\"").status, 0);
        QCOMPARE(device.calls(), QStringList({"sudo date -s '5 Mar 2024'", "date -s '5 Mar 2024'"}));
        device.removeTool("/usr/bin/date");
        QCOMPARE(device.call("sudo date").status, 1);
    }

    void pkillReachesThisDeviceOnly()
    {
        const LabDevice device;
        QProcess stranger;
        QProcessEnvironment elsewhere = QProcessEnvironment::systemEnvironment();
        elsewhere.remove("KT_DEVICE_ROOT");
        stranger.setProcessEnvironment(elsewhere);
        stranger.start("sleep", {"60"});
        QProcess client;
        client.start("sleep", {"60"});
        QVERIFY(stranger.waitForStarted() && client.waitForStarted());
        QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 0);
        QVERIFY(client.waitForFinished());
        QCOMPARE(client.exitStatus(), QProcess::CrashExit);
        QCOMPARE(device.call("pkill -SIGUSR1 sleep").status, 1);
        QCOMPARE(stranger.state(), QProcess::Running);
        stranger.kill();
        stranger.waitForFinished();
    }

    void hangingTool_data()
    {
        const TestTable<bool> table("ignoresTermination");
        table.row("hang", false);
        table.row("stubborn", true);
    }

    void hangingTool()
    {
        QFETCH(bool, ignoresTermination);
        const LabDevice device;
        QCOMPARE(device.lab("fault hostname sulk"), 2);
        QCOMPARE(device.lab(QString("fault hostname ") + QTest::currentDataTag()), 0);
        QProcess tool;
        tool.start(device.path("/usr/bin/hostname"), QStringList());
        QTRY_COMPARE(device.calls().size(), 1);
        const auto ignoredSignals = [&tool] {
            QFile status(QString("/proc/%1/status").arg(tool.processId()));
            const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
            return text.mid(text.indexOf("SigIgn:") + 7, 17).trimmed().toULongLong(nullptr, 16);
        };
        QTRY_COMPARE((ignoredSignals() >> (SIGTERM - 1) & 1) != 0, ignoresTermination);
        QCOMPARE(tool.state(), QProcess::Running);
        ignoresTermination ? tool.kill() : tool.terminate();
        QVERIFY(tool.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(StandInsTest)
#include "standinstest.moc"
