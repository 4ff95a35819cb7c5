// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/blockreadahead.h"
#include "update/udpfilemodule.h"

#include "testdevice.h"
#include "testtable.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

namespace {

const QHostAddress serverAddress("10.77.0.21");

QByteArray content(int size, quint32 seed)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator generator(seed);
    for (char &byte : bytes)
        byte = static_cast<char>(generator.bounded(256));
    return bytes;
}

/// A server behind a bad link, and a transfer from it with requests ahead.
class Download
{
public:
    Download()
        : done(&transfer, &UdpFileModule::ready_TransferDone)
        , messages(&transfer, &UdpFileModule::downloadFinished)
    {
        QObject::connect(&transfer, &UdpFileModule::ask_WantUdpFileData, &ahead, &BlockReadAhead::request);
        QObject::connect(&ahead, &BlockReadAhead::blockArrived, &transfer, &UdpFileModule::fsm_SaveData);
        QObject::connect(&transfer, &UdpFileModule::ready_TransferDone, &ahead, &BlockReadAhead::stop);
        QObject::connect(&transfer, &UdpFileModule::ready_TransferDone, &transfer,
                         [this](QTemporaryFile *result) { taken.reset(result); });
        QObject::connect(&ahead, &BlockReadAhead::ask_WantUdpFileData, &ahead,
                         [this](const UdpFileRequest &request) { serve(request); });
        link.setInterval(1);
        QObject::connect(&link, &QTimer::timeout, &link, [this] { deliver(); });
        link.start();
    }

    bool run(const QString &name)
    {
        done.clear();
        transfer.fsm_StartTransfer(UdpFileRequest(serverAddress, name), false);
        return done.count() > 0 || done.wait(30000);
    }
    QByteArray received() const { return taken && taken->seek(0) ? taken->readAll() : QByteArray(); }

    void serve(const UdpFileRequest &request)
    {
        ++requests;
        largestBatch = qMax(largestBatch, ++batch);
        if (chance(lostPercent) || (silentFrom >= 0 && request.position >= static_cast<quint32>(silentFrom)))
            return;
        if (oneAtATime)
            waiting.clear();
        const auto total = static_cast<quint32>(file.size());
        const UdpFileReply reply(serverAddress, request.position, total,
                                 file.mid(static_cast<int>(request.position), 1024));
        waiting.insert(chance(reorderedPercent) ? qMax(0, waiting.size() - 3) : waiting.size(), reply);
        if (chance(reorderedPercent))
            waiting.append(reply);
    }
    /// A round trip's end: all that was asked for meanwhile arrives.
    void deliver()
    {
        batch = 0;
        const QList<UdpFileReply> replies = std::exchange(waiting, {});
        for (const UdpFileReply &reply : replies) {
            if (!chance(lostPercent))
                ahead.handleReply(reply);
        }
    }
    bool chance(int percent) { return static_cast<int>(dice.bounded(100)) < percent; }

    TestDevice device;
    QByteArray file;
    int lostPercent = 0;
    int reorderedPercent = 0;
    int silentFrom = -1;
    bool oneAtATime = false;
    int requests = 0;
    int batch = 0;
    int largestBatch = 0;
    QList<UdpFileReply> waiting;
    QTimer link;
    QRandomGenerator dice{7};
    UdpFileModule transfer;
    BlockReadAhead ahead;
    QSignalSpy done;
    QSignalSpy messages;
    std::unique_ptr<QTemporaryFile> taken;
};

} // namespace

/// Requests ahead of what a transfer wants, over good and bad links.
class BlockReadAheadTest : public QObject
{
    Q_OBJECT

private slots:
    void fetches_data()
    {
        const TestTable<int, int, int> table("size", "lost", "reordered");
        table.row("good link", 300 * 1024 + 1, 0, 0);
        table.row("reorders and repeats", 300 * 1024, 0, 20);
        table.row("loses 1 %", 2000 * 1024, 1, 1);
        table.row("loses 10 % of requests and replies", 300 * 1024 + 5, 10, 5);
        table.row("one block", 5, 0, 0);
    }

    void fetches()
    {
        QFETCH(const int, size);
        Download download;
        download.file = content(size, 1);
        QFETCH(const int, lost);
        QFETCH(const int, reordered);
        download.lostPercent = lost;
        download.reorderedPercent = reordered;
        QVERIFY(download.run("fw.img"));
        QVERIFY(download.received() == download.file);
        const int blocks = (size + 1023) / 1024;
        QVERIFY(download.requests < blocks * (lost == 10 ? 2 : 1.3) + 5);
        if (size > 100 * 1024) {
            QVERIFY(download.largestBatch > 16);
            QVERIFY(download.largestBatch <= 2 * BlockReadAhead::largestWindow);
        }
    }

    void asksOneAtATimeWhereTheServerTakesNoMore()
    {
        Download download;
        download.oneAtATime = true;
        download.file = content(100 * 1024, 2);
        QVERIFY(download.run("fw.img"));
        QVERIFY(download.received() == download.file);
        QCOMPARE(download.ahead.window(), 1);
        QVERIFY(download.requests < 600);
    }

    void failsLikeATransferWithoutRequestsAhead()
    {
        Download download;
        download.transfer.setTimeout(200);
        download.file = content(100 * 1024, 3);
        download.silentFrom = 50 * 1024;
        QVERIFY(download.run("fw.img"));
        QVERIFY(!download.taken);
        QCOMPARE(download.messages.value(0).value(0).toString(), QString("Download error: File not found"));
        QVERIFY(download.requests < 50 + BlockReadAhead::largestWindow + 60);
    }

    /// A block does not name its file, so replies to the requests of a failed transfer could pass for
    /// another's.
    void takesNoBlockOfAFailedTransfer()
    {
        Download download;
        download.transfer.setTimeout(200);
        download.file = content(100 * 1024, 4);
        download.silentFrom = 50 * 1024;
        QVERIFY(download.run("one.img"));
        const QByteArray late = download.file;
        download.file = content(100 * 1024, 5);
        download.silentFrom = -1;
        QObject::connect(&download.ahead, &BlockReadAhead::ask_WantUdpFileData, &download.ahead,
                         [&](const UdpFileRequest &request) {
                             for (quint32 position = 1024; position < request.position; position += 1024)
                                 download.ahead.handleReply({serverAddress, position, 100 * 1024,
                                                             late.mid(static_cast<int>(position), 1024)});
                         });
        QVERIFY(download.run("two.img"));
        QVERIFY(download.received() == download.file);
    }
};

QTEST_GUILESS_MAIN(BlockReadAheadTest)
#include "blockreadaheadtest.moc"
