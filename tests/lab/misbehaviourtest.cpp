// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

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
    void faultOfOneSubCommand();
    void preparedAnswer();
    void callsAreRecordedWhole();
    void callsMadeAtOnceDoNotMix();
    void messageReachesTheProgram();
};

void MisbehaviourTest::faultThatEnds_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<bool>("crashed");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("bytes");
    QTest::newRow("crash") << QByteArray("crash") << true << -1 << 0;
    QTest::newRow("exit") << QByteArray("exit 5") << false << 5 << 0;
    QTest::newRow("flood") << QByteArray("flood") << false << 0 << 64 * 1024 * 1024;
}

void MisbehaviourTest::faultThatEnds()
{
    QFETCH(QByteArray, fault);
    QFETCH(bool, crashed);
    QFETCH(int, status);
    const LabDevice device;
    QCOMPARE(device.lab("fault hostname " + fault).status, 0);
    const Outcome outcome = device.call("hostname");
    QCOMPARE(outcome.crashed, crashed);
    if (!crashed)
        QCOMPARE(outcome.status, status);
    QTEST(outcome.output.size(), "bytes");

    QCOMPARE(device.lab("fault hostname none").status, 0);
    QCOMPARE(device.call("hostname").output, QByteArray("kt964-lab\n"));
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
    device.write("lab/faults/hostname", QTest::currentDataTag());
    QProcess tool;
    tool.start(device.path("usr/bin/hostname"), QStringList());
    QTRY_COMPARE(device.calls().size(), 1);
    const auto ignoredSignals = [&tool] {
        QFile status(QStringLiteral("/proc/%1/status").arg(tool.processId()));
        const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
        return text.mid(text.indexOf("SigIgn:") + 7, 17).trimmed().toULongLong(nullptr, 16);
    };
    QTRY_COMPARE((ignoredSignals() >> (SIGTERM - 1) & 1) != 0, ignoresTermination);
    QCOMPARE(tool.state(), QProcess::Running);
    ignoresTermination ? tool.kill() : tool.terminate();
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.readAllStandardOutput(), QByteArray());
}

void MisbehaviourTest::faultOfOneSubCommand()
{
    const LabDevice device;
    QCOMPARE(device.lab("fault kt-network-config.is-wired-on garbage").status, 0);
    const QByteArray garbage = device.networkAnswer("is-wired-on");
    QVERIFY(garbage.contains('\0') && garbage.contains('\xff'));
    QCOMPARE(device.networkAnswer("is-wired-linked"), QByteArray("true"));
    QCOMPARE(device.lab("fault hostname sulk").status, 2);
}

void MisbehaviourTest::preparedAnswer()
{
    const LabDevice device;
    device.write("lab/answers/tvservice", "any");
    device.write("lab/answers/tvservice.-j.-m.DMT", "modes, no line end");
    QCOMPARE(device.call("opt/vc/bin/tvservice -j -m DMT").output, QByteArray("modes, no line end"));
    QCOMPARE(device.call("opt/vc/bin/tvservice -s").output, QByteArray("any"));
}

void MisbehaviourTest::callsAreRecordedWhole()
{
    const LabDevice device;
    device.call("kt-set-timezone US/Pacific",
                {QString(), QStringLiteral("it's"), QStringLiteral("a;b $c"), QStringLiteral("two\nlines"),
                 QString::fromUtf8("\xc3\xa9t\xc3\xa9")});
    const QByteArray line
        = "kt-set-timezone US/Pacific '' 'it'\\''s' 'a;b $c' $'two\\nlines' '\xc3\xa9t\xc3\xa9'\n";
    QCOMPARE(device.read("lab/calls.log"), line);
    QCOMPARE(device.lab("calls").output, line);
}

void MisbehaviourTest::callsMadeAtOnceDoNotMix()
{
    const LabDevice device;
    const QString word(2000, QLatin1Char('x'));
    std::vector<std::unique_ptr<QProcess>> tools;
    for (int i = 0; i < 12; ++i) {
        tools.push_back(std::make_unique<QProcess>());
        tools.back()->start(device.path("usr/bin/kt-switch"), {word});
    }
    for (const auto &tool : tools)
        QVERIFY(tool->waitForFinished());
    QCOMPARE(device.calls(), QVector<QString>(12, QStringLiteral("kt-switch ") + word).toList());
}

void MisbehaviourTest::messageReachesTheProgram()
{
    const LabDevice device;
    QCOMPARE(device.lab("message {}").status, 2);

    QProcess program;
    program.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(program.waitForStarted());
    device.write("lab/kt964.pid", QByteArray::number(program.processId()) + '\n');
    QCOMPARE(device.lab("message \"{ }\"").status, 0);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), SIGUSR1);
    QCOMPARE(device.read("tmp/msg.json"), QByteArray("{ }\n"));
}

QTEST_GUILESS_MAIN(MisbehaviourTest)
#include "misbehaviourtest.moc"
