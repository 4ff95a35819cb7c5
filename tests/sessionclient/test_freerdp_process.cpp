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
    if (stopWhen != 0 && QTest::qWaitFor([standIn] { return standIn->has("ready"); }))
        process.stop();
    if (!QTest::qWaitFor([&ends] { return !ends.isEmpty(); }, 20000))
        return {EndReason::BadFile, "no end", {}};
    QCoreApplication::processEvents();
    return ends.size() == 1 ? ends.first().first().value<SessionEnd>()
                            : SessionEnd{EndReason::BadFile, "more than one end", {}};
}

class TestFreeRdpProcess : public QObject
{
    Q_OBJECT

private slots:
    void everyEndHasItsReason_data()
    {
        const TestTable<QByteArray, int> table("behaviour", "reason");
        const QVector<QPair<EndReason, QVector<int>>> codes{
            {EndReason::Ended, {0, 11, 12}},
            {EndReason::EndedByServer, {1, 2}},
            {EndReason::TimeLimit, {3, 4}},
            {EndReason::TakenOver, {5}},
            {EndReason::NameNotFound, {139, 140}},
            {EndReason::Unreachable, {141, 147}},
            {EndReason::ConnectionLost, {131}},
            {EndReason::LogonRejected, {10, 132, 134, 154, 159}},
            {EndReason::PasswordExpired, {148, 149, 152}},
            {EndReason::AccountLocked, {135}},
            {EndReason::AccountUnusable, {151, 153, 156, 157}},
            {EndReason::NotAllowed, {7, 9, 144, 155, 158}},
            {EndReason::DomainUnreachable, {150}},
            {EndReason::SecurityMismatch, {8, 133, 146}},
            {EndReason::CertificateRefused, {143}},
            {EndReason::NoLicence, {16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 240, 245, 250}},
            {EndReason::ServerFault, {6, 32, 130, 142}},
            {EndReason::ClientFault, {77, 128, 129, 136, 137, 138, 145, 255}}};
        for (const auto &entry : codes) {
            for (const int code : entry.second)
                QTest::addRow("%d", code)
                    << QByteArray("exit " + QByteArray::number(code)) << int(entry.first);
        }
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
        table.row("at once", "touch ready; exec sleep 60");
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

QTEST_GUILESS_MAIN(TestFreeRdpProcess)
#include "test_freerdp_process.moc"
