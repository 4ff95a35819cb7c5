// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "testdevice.h"

#include <QtTest>

namespace {

struct Outcome
{
    int status = -1;
    QByteArray error;
};

/// A device whose tools are called by command lines: words with blanks in double quotes.
struct LabDevice : TestDevice
{
    Outcome call(const QString &commandLine) const
    {
        QStringList words = QProcess::splitCommand(commandLine);
        QProcess process;
        process.start(path("/usr/bin/" + words.takeFirst()), words, QIODevice::ReadOnly);
        process.waitForFinished();
        return {process.exitCode(), process.readAllStandardError()};
    }
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
};

QTEST_GUILESS_MAIN(StandInsTest)
#include "standinstest.moc"
