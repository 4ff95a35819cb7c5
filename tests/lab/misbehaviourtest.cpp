// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>
#include <memory>
#include <vector>

// What the lab does beyond playing the tools: faults, prepared answers, the record of calls, messages.
class MisbehaviourTest : public QObject
{
    Q_OBJECT

private slots:
    void faultThatEnds_data();
    void faultThatEnds();
    void hangingTool_data();
    void hangingTool();
    void slowToolStillAnswers();
    void faultOfOneSubCommand();
    void preparedAnswer();
    void callsAreRecordedWhole();
    void callsMadeAtOnceDoNotMix();
    void messageReachesTheProgram();
};

void MisbehaviourTest::faultThatEnds_data()
{
    QTest::addColumn<QStringList>("fault");
    QTest::addColumn<bool>("crashed");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("bytes");
    QTest::newRow("crash") << QStringList{QStringLiteral("crash")} << true << -1 << 0;
    QTest::newRow("exit") << QStringList{QStringLiteral("exit"), QStringLiteral("5")} << false << 5 << 0;
    QTest::newRow("flood") << QStringList{QStringLiteral("flood")} << false << 0 << 64 * 1024 * 1024;
}

void MisbehaviourTest::faultThatEnds()
{
    QFETCH(QStringList, fault);
    QFETCH(bool, crashed);
    QFETCH(int, status);
    const LabDevice device;
    QCOMPARE(device.lab(QStringList{QStringLiteral("fault"), QStringLiteral("hostname")} + fault).status, 0);
    const Outcome outcome = device.call(QStringLiteral("hostname"));
    QCOMPARE(outcome.crashed, crashed);
    if (!crashed)
        QCOMPARE(outcome.status, status);
    QTEST(outcome.output.size(), "bytes");

    QCOMPARE(device.lab({QStringLiteral("fault"), QStringLiteral("hostname"), QStringLiteral("none")}).status,
             0);
    QCOMPARE(device.call(QStringLiteral("hostname")).output, QByteArray("kt964-lab\n"));
}

void MisbehaviourTest::hangingTool_data()
{
    QTest::addColumn<bool>("ignoresTermination");
    QTest::newRow("hang") << false;
    QTest::newRow("stubborn") << true;
}

void MisbehaviourTest::hangingTool()
{
    QFETCH(bool, ignoresTermination);
    const LabDevice device;
    device.write(QStringLiteral("lab/faults/hostname"), QByteArray(QTest::currentDataTag()));
    QProcess tool;
    tool.start(device.path(QStringLiteral("usr/bin/hostname")), QStringList());
    QTRY_COMPARE(device.calls().size(), 1);
    const auto ignoredSignals = [&tool] {
        QFile status(QStringLiteral("/proc/%1/status").arg(tool.processId()));
        if (!status.open(QIODevice::ReadOnly))
            return 0ULL;
        const QByteArray text = status.readAll();
        return text.mid(text.indexOf("SigIgn:") + 7, 17).trimmed().toULongLong(nullptr, 16);
    };
    QTRY_COMPARE((ignoredSignals() >> (SIGTERM - 1) & 1) != 0, ignoresTermination);
    QCOMPARE(tool.state(), QProcess::Running);
    ignoresTermination ? tool.kill() : tool.terminate();
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.readAllStandardOutput(), QByteArray());
}

void MisbehaviourTest::slowToolStillAnswers()
{
    const LabDevice device;
    device.write(QStringLiteral("lab/faults/hostname"), "slow 150");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(device.call(QStringLiteral("hostname")).output, QByteArray("kt964-lab\n"));
    QVERIFY(clock.elapsed() >= 150);
}

void MisbehaviourTest::faultOfOneSubCommand()
{
    const LabDevice device;
    device.write(QStringLiteral("lab/faults/kt-network-config.is-wired-on"), "garbage");
    const QByteArray garbage = device.networkConfig(QStringLiteral("is-wired-on")).output;
    QVERIFY(garbage.contains('\0') && garbage.contains('\xff'));
    QCOMPARE(device.networkConfig(QStringLiteral("is-wired-linked")).output, QByteArray("true\n"));
    QCOMPARE(device.lab({QStringLiteral("fault"), QStringLiteral("hostname"), QStringLiteral("sulk")}).status,
             2);
}

void MisbehaviourTest::preparedAnswer()
{
    const LabDevice device;
    const QString tool = QStringLiteral("opt/vc/bin/tvservice");
    const QStringList arguments{QStringLiteral("-j"), QStringLiteral("-m"), QStringLiteral("DMT")};
    QCOMPARE(device.call(tool, arguments).output, QByteArray());
    device.write(QStringLiteral("lab/answers/tvservice"), "any");
    device.write(QStringLiteral("lab/answers/tvservice.-j.-m.DMT"), "modes, no line end");
    QCOMPARE(device.call(tool, arguments).output, QByteArray("modes, no line end"));
    QCOMPARE(device.call(tool, {QStringLiteral("-a")}).output, QByteArray("any"));
}

void MisbehaviourTest::callsAreRecordedWhole()
{
    const LabDevice device;
    device.call(QStringLiteral("kt-set-timezone"),
                {QStringLiteral("US/Pacific"), QString(), QStringLiteral("it's"), QStringLiteral("a;b $c"),
                 QStringLiteral("two\nlines"), QString::fromUtf8("\xc3\xa9t\xc3\xa9")});
    QCOMPARE(device.calls(),
             QStringList(QString::fromUtf8(
                 "kt-set-timezone US/Pacific '' 'it'\\''s' 'a;b $c' $'two\\nlines' '\xc3\xa9t\xc3\xa9'")));
    QCOMPARE(device.lab({QStringLiteral("calls")}).output, device.read(QStringLiteral("lab/calls.log")));
}

void MisbehaviourTest::callsMadeAtOnceDoNotMix()
{
    const LabDevice device;
    const QString word(2000, QLatin1Char('x'));
    std::vector<std::unique_ptr<QProcess>> tools;
    for (int i = 0; i < 12; ++i) {
        tools.push_back(std::make_unique<QProcess>());
        tools.back()->start(device.path(QStringLiteral("usr/bin/kt-switch")), {word});
    }
    for (const auto &tool : tools)
        QVERIFY(tool->waitForFinished());
    QCOMPARE(device.calls().size(), 12);
    QCOMPARE(device.calls().count(QStringLiteral("kt-switch ") + word), 12);
}

void MisbehaviourTest::messageReachesTheProgram()
{
    const LabDevice device;
    const QStringList message{QStringLiteral("message"), QStringLiteral("{\"type\": \"refresh audio\"}")};
    QCOMPARE(device.lab(message).status, 2);

    QProcess program;
    program.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo up; exec sleep 60")});
    QVERIFY(program.waitForReadyRead());
    device.write(QStringLiteral("lab/kt964.pid"), QByteArray::number(program.processId()) + '\n');
    QCOMPARE(device.lab(message).status, 0);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), SIGUSR1);
    QCOMPARE(device.read(QStringLiteral("tmp/msg.json")), QByteArray("{\"type\": \"refresh audio\"}\n"));
}

QTEST_GUILESS_MAIN(MisbehaviourTest)
#include "misbehaviourtest.moc"
