// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"
#include "device/toolqueue.h"
#include "device/toolrun.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

#include <optional>

using End = ToolResult::End;
Q_DECLARE_METATYPE(End)

/// A tool's end, whatever the tool does.
class ToolRunTest : public QObject
{
    Q_OBJECT

private slots:
    void endsOnce_data()
    {
        const TestTable<QByteArray, int, End, int, QByteArray> table("script", "limit", "end", "exitCode",
                                                                     "output");
        constexpr int none = 0;
        table.row("prints", "printf '%s|' \"$@\"; echo error >&2", none, End::Exited, 0, "a b|$(c)|");
        table.row("fails", "printf half; exit 3", none, End::Exited, 3, "half");
        table.row("crashes", "printf half; kill -SEGV $$", none, End::Crashed, -1, "half");
        table.row("missing", {}, none, End::NotStarted, -1, {});
        table.row("asks for input", "cat; echo read", none, End::Exited, 0, "read\n");
        table.row("hangs", "echo half; exec sleep 600", 200, End::TimedOut, -1, {});
        table.row("hangs with its children", "trap '' TERM; sleep 600 & wait", 200, End::TimedOut, -1, {});
        table.row("floods", "yes", none, End::TooLong, -1, {});
    }

    void endsOnce()
    {
        QFETCH(const QByteArray, script);
        QFETCH(const int, limit);
        const TestDevice device;
        if (!script.isEmpty())
            device.setTool("/usr/bin/kt-tool", script);
        QList<ToolResult> results;
        ToolRun::start(ToolCall::query("/usr/bin/kt-tool", {"a b", "$(c)"}, limit), this,
                       [&](const ToolResult &result) { results += result; });
        QVERIFY(results.isEmpty()); // nobody has waited
        QTRY_COMPARE(results.size(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(results.size(), 1);
        QTEST(results.first().end, "end");
        if (results.first().end == End::Exited)
            QTEST(results.first().exitCode, "exitCode");
        QTEST(results.first().output, "output");
    }

    void aQueueGoesOnBehindAToolThatHangs()
    {
        const TestDevice device;
        device.setTool("/usr/bin/kt-tool",
                       "echo $1 >>$KT_DEVICE_ROOT/tmp/order; [ $1 = fast ] || exec sleep 600");
        ToolQueue queue;
        const QSignalSpy idle(&queue, &ToolQueue::idle);
        QByteArray seen;
        queue.add(ToolCall::command(Commands::line("/usr/bin/kt-tool", "slow"), 200));
        queue.add([&] { seen = device.read("/tmp/order"); });
        queue.add(ToolCall::command(Commands::line("/usr/bin/kt-tool", "fast")));
        QTRY_COMPARE(idle.size(), 1);
        QCOMPARE(seen, QByteArray("slow\n"));
        QCOMPARE(device.read("/tmp/order"), QByteArray("slow\nfast\n"));
    }
};

QTEST_GUILESS_MAIN(ToolRunTest)
#include "toolruntest.moc"
