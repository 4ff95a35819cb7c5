// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/freerdpprocess.h"
#include "standin.h"
#include "testtable.h"

#include <QtTest>

// Starts the stand-in and waits for its end, which must come once.
static SessionEnd runToEnd(FreeRdpProcess &process, const FreeRdpCommand &command = {}, int stopWhen = 0,
                           const StandIn *standIn = nullptr)
{
    QSignalSpy ends(&process, &FreeRdpProcess::ended);
    process.start(command, QProcessEnvironment::systemEnvironment());
    if (stopWhen != 0 && QTest::qWaitFor([standIn] { return standIn->has("ready"); }, TestGroup::waitMs()))
        process.stop();
    if (!QTest::qWaitFor([&ends] { return !ends.isEmpty(); }, TestGroup::waitMs()))
        return {EndReason::BadFile, "no end", {}};
    QCoreApplication::processEvents();
    return ends.size() == 1 ? ends.first().first().value<SessionEnd>()
                            : SessionEnd{EndReason::BadFile, "more than one end", {}};
}

class FreeRdpProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void everyEndHasItsReason_data()
    {
        const TestTable<QByteArray, int> table("behaviour", "reason");
        // A code for each way of telling them apart; the rest of the table stands in the program.
        table.row("log-off", "exit 12", int(EndReason::Ended));
        table.row("no such host", "exit 140", int(EndReason::NameNotFound));
        table.row("rejected", "exit 132", int(EndReason::LogonRejected));
        table.row("signal", "kill -SEGV $$", int(EndReason::ClientFault));
        table.row("missing", {}, int(EndReason::ClientMissing));
    }

    void everyEndHasItsReason()
    {
        QFETCH(QByteArray, behaviour);
        const StandIn standIn(behaviour);
        if (behaviour.isNull())
            qputenv("PATH", QFile::encodeName(standIn.path(".")));
        FreeRdpProcess process;
        QTEST(int(runToEnd(process).reason), "reason");
    }

    void stops_data()
    {
        const TestTable<QByteArray> table("behaviour");
        table.row("deaf", "trap '' TERM; touch ready; while :; do sleep 0.1; done");
        table.row("calls it a success", "trap 'exit 0' TERM; touch ready; while :; do sleep 0.1; done");
    }

    void stops()
    {
        QFETCH(QByteArray, behaviour);
        const StandIn standIn(behaviour);
        FreeRdpProcess process;
        QCOMPARE(int(runToEnd(process, {}, 1, &standIn).reason), int(EndReason::Stopped));
    }

    void survivesAFlood()
    {
        const StandIn standIn("yes 'flood of geheim' | head -c 4000000; printf 'last words' >&2; exit 140");
        FreeRdpProcess process;
        FreeRdpCommand command;
        command.secrets = QStringList("geheim");
        const SessionEnd end = runToEnd(process, command);
        QCOMPARE(int(end.reason), int(EndReason::NameNotFound));
        QVERIFY(end.output.filter("geheim").isEmpty());
        QVERIFY(end.output.last().endsWith("last words"));
        QCOMPARE(end.output.size(), OutputTail::mostLines);
    }
};

QTEST_GUILESS_MAIN(FreeRdpProcessTest)
#include "freerdpprocesstest.moc"
