// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/diagnostics.h"
#include "device/log.h"

#include <QtTest>

#include <thread>
#include <vector>

Q_LOGGING_CATEGORY(lcSubject, "kt.test.subject")
Q_LOGGING_CATEGORY(lcCredentials, "kt.test.credentials")

namespace {

QStringList written; ///< what got through to the handler that stood before the log's

QStringList textsOf(const LogLines &lines)
{
    QStringList texts;
    for (const LogEntry &entry : lines.entries)
        texts += entry.severityName() + " " + entry.category + " " + entry.text;
    return texts;
}
} // namespace

class LogTest : public QObject
{
    Q_OBJECT

private slots:
    void oldestLinesMakeRoom()
    {
        LogRing ring;
        QVERIFY(ring.since(0).entries.isEmpty());
        for (int number = 0; number < LogRing::capacity + 7; ++number)
            ring.append(LogSeverity::Debug, "kt", QString::number(number));
        const LogLines kept = ring.since(0);
        QCOMPARE(kept.first, quint64(7));
        QCOMPARE(kept.entries.size(), 5000);
        QCOMPARE(kept.entries.first().text, "7");
        QVERIFY(ring.since(5007).entries.isEmpty());
        QCOMPARE(ring.since(99999).first, quint64(5007));
    }

    void textsBecomeLines()
    {
        const auto kept = [](const QString &text) {
            LogRing ring;
            ring.append(LogSeverity::Debug, QString(), text);
            QStringList lines;
            for (const LogEntry &entry : ring.since(0).entries)
                lines += entry.text;
            return lines;
        };
        QCOMPARE(kept("one\n\ntwo\n"), (QStringList{"one", "", "two"}));
        QCOMPARE(kept(""), QStringList{""});
        QCOMPARE(kept("a\x1b[31mb\tc\r\n"), QStringList{"a [31mb c "});
        QCOMPARE(kept(QString(1000, 'x')), QStringList{QString(1000, 'x')});
        QCOMPARE(kept(QString(1001, 'x')), QStringList{QString(999, 'x') + QChar(0x2026)});
        const QString face = QString::fromUtf8("\xF0\x9F\x98\x80"); // two code units, never cut apart
        QCOMPARE(kept(QString(998, 'x') + face + face), QStringList{QString(998, 'x') + QChar(0x2026)});
    }

    void keepsWhatIsNoSecret()
    {
        const quint64 start = static_cast<quint64>(Log::ring().since(0).entries.size());
        const QtMessageHandler tests = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) { written += message; });
        Log::install();
        Log::install(); // a second time changes nothing
        qCDebug(lcSubject, "d");
        qCInfo(lcSubject, "i");
        qCWarning(lcSubject, "w");
        qCCritical(lcSubject, "c");
        qCDebug(lcCredentials, "hunter2");
        Diagnostics::printToStandardOutputOnly("hunter2");
        Diagnostics::print("LINK_WIRED");
        qInstallMessageHandler(tests);

        QCOMPARE(
            textsOf(Log::ring().since(start)),
            (QStringList{"debug kt.test.subject d", "info kt.test.subject i", "warning kt.test.subject w",
                         "critical kt.test.subject c", "info kt.diagnostics LINK_WIRED"}));
        QCOMPARE(written, (QStringList{"d", "i", "w", "c", "hunter2"}));
    }

    void takesLinesFromSeveralThreads()
    {
        LogRing ring;
        std::vector<std::thread> threads;
        for (const char *name : {"a", "b", "c"})
            threads.emplace_back([&ring, name] {
                for (int number = 0; number < LogRing::capacity; ++number)
                    ring.append(LogSeverity::Debug, name, QString("%1\n%1").arg(number));
            });
        for (quint64 next = 0; next < 3 * 2 * LogRing::capacity;) {
            const LogLines lines = ring.since(next);
            next = lines.first + static_cast<quint64>(lines.entries.size());
        }
        for (std::thread &thread : threads)
            thread.join();
        const QStringList kept = textsOf(ring.since(0));
        QCOMPARE(kept.size(), LogRing::capacity);
        for (int row = 0; row < kept.size(); row += 2)
            QCOMPARE(kept.at(row), kept.at(row + 1));
    }
};

QTEST_GUILESS_MAIN(LogTest)
#include "logtest.moc"
