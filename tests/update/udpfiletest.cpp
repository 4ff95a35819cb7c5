// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/udpfilemodule.h"
#include "update/udpserver.h"

#include "fulldisk.h"
#include "testdevice.h"
#include "testtable.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

namespace {

const QHostAddress ours("10.77.0.21");
const QString notFound = "Download error: File not found";
const QString image = "fw.img";

QByteArray content(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i / 7 + i);
    return bytes;
}

UdpFileReply block(const QByteArray &file, quint32 position, const QHostAddress &sender = ours)
{
    return {sender, position, static_cast<quint32>(file.size()), file.mid(static_cast<int>(position), 1024)};
}

/// A transfer whose blocks the test feeds; a request is answered by `answer`.
class Transfer
{
public:
    Transfer()
        : done(&module, &UdpFileModule::ready_TransferDone)
        , messages(&module, &UdpFileModule::downloadFinished)
    {
        module.setTimeout(20);
        QObject::connect(&module, &UdpFileModule::ready_TransferDone, &module,
                         [this](QTemporaryFile *file) { taken.reset(file); });
        QObject::connect(&module, &UdpFileModule::ask_WantUdpFileData, &module,
                         [this](const UdpFileRequest &request, int &error) {
                             asked += request.position;
                             if (answer)
                                 answer(request, error);
                         });
    }
    bool run(const QString &name = image)
    {
        module.fsm_StartTransfer(UdpFileRequest(ours, name), false);
        return done.count() > 0 || done.wait(TestGroup::waitMs());
    }
    QByteArray received() { return taken && taken->seek(0) ? taken->readAll() : QByteArray(); }

    TestDevice device;
    UdpFileModule module;
    QSignalSpy done;
    QSignalSpy messages;
    std::unique_ptr<QTemporaryFile> taken;
    QList<quint32> asked;
    std::function<void(const UdpFileRequest &, int &)> answer;
};

/// A server whose index offers these versions, in their order.
std::unique_ptr<UdpServer> offering(const QByteArray &index)
{
    auto server = std::make_unique<UdpServer>(ours, "Office");
    QTemporaryFile file;
    if (file.open() && file.write(index) == index.size())
        server->setRxUpdateJson(&file);
    return server;
}

} // namespace

/// The transfer of one file, fed by hand, and what a server's index is taken for.
class UdpFileTest : public QObject
{
    Q_OBJECT

private slots:
    void fetches_data()
    {
        const TestTable<int, QList<quint32>> table("size", "asked");
        table.row("one byte more", 1025, QList<quint32>({0, 1024}));
        table.row("three blocks", 3000, QList<quint32>({0, 1024, 2048}));
    }

    /// Each block arrives among others that it does not wait for, and in answer to a request that was not
    /// sent.
    void fetches()
    {
        QFETCH(const int, size);
        const QByteArray file = content(size);
        Transfer transfer;
        const auto feed = [&](const UdpFileReply &reply) {
            transfer.module.fsm_SaveData(reply);
        };
        transfer.answer = [&](const UdpFileRequest &request, int &error) {
            error = 1;
            feed(block(QByteArray(size, 'x'), request.position, QHostAddress("10.77.0.22")));
            feed(block(file, request.position + 1024));
            feed(block(file, request.position, QHostAddress("::ffff:10.77.0.21")));
            feed(block(file, request.position));
        };
        feed(block(file, 0));
        QVERIFY(transfer.run());
        QCOMPARE(transfer.received(), file);
        QTEST(transfer.asked, "asked");
        QCOMPARE(transfer.messages.count(), 0);
        QCOMPARE(transfer.module.state(), UdpFileModule::State::Idle);
    }

    void failsWithoutAFile_data()
    {
        const TestTable<QString> table("fault");
        for (const char *fault : {"total changes", "refused", "too large", "disk full", "empty block"})
            table.row(fault, QString::fromLatin1(fault));
    }

    void failsWithoutAFile()
    {
        QFETCH(const QString, fault);
        const QByteArray file = content(5000);
        Transfer transfer;
        if (fault == "too large")
            transfer.module.setSizeLimit(4999);
        std::optional<FullDisk> full;
        if (fault == "disk full")
            full.emplace(3000);
        transfer.answer = [&](const UdpFileRequest &request, int &error) {
            UdpFileReply reply = block(file, request.position);
            if (fault == "total changes" && request.position == 2048)
                ++reply.total;
            if (fault == "empty block" && request.position == 2048)
                reply.data.clear();
            if (fault == "refused")
                error = -1;
            else
                transfer.module.fsm_SaveData(reply);
        };
        QVERIFY(transfer.run());
        full.reset();
        QVERIFY(!transfer.taken);
        QCOMPARE(transfer.messages.count(), 0);
        QCOMPARE(QDir(transfer.device.path("/var/lib/updates")).entryList(QDir::Files), QStringList());
    }

    void asksThreeTimes()
    {
        Transfer transfer;
        transfer.answer = [&](const UdpFileRequest &request, int &) {
            if (request.position == 0 && transfer.asked.size() == 3)
                transfer.module.fsm_SaveData(block(content(2000), 0));
        };
        QVERIFY(transfer.run());
        QCOMPARE(transfer.asked, QList<quint32>({0, 0, 0, 1024, 1024, 1024}));
        QCOMPARE(transfer.messages.value(0).value(0).toString(), notFound);
        QVERIFY(!transfer.taken);
    }

    /// A small index may be the whole of what a transfer waits for.
    void takesNoLateIndexForAnImage()
    {
        Transfer transfer;
        const QByteArray index("{\"FIRMWARES\": []}");
        const QByteArray others(2000, 'o');
        const QByteArray file = content(3000);
        transfer.answer = [&](const UdpFileRequest &request, int &) {
            if (request.fileName == "kt-update.txt")
                return transfer.module.fsm_SaveData(block(index, 0));
            if (request.fileName == "other.txt")
                return transfer.module.fsm_SaveData(block(others, request.position));
            if (transfer.asked.size() % 3 != 0)
                transfer.module.fsm_SaveData(block(request.position == 0 ? index : others, request.position));
            else
                transfer.module.fsm_SaveData(block(file, request.position));
        };
        for (const char *name : {"kt-update.txt", "other.txt", "fw.img"}) {
            transfer.done.clear();
            QVERIFY(transfer.run(name));
        }
        QCOMPARE(transfer.received(), file);
    }

    /// Several replies like an index are not late ones, but of a file with the same content.
    void fetchesTwoNamesOfOneContent()
    {
        for (const int size : {500, 5000}) {
            const QByteArray file = content(size);
            Transfer transfer;
            transfer.answer = [&](const UdpFileRequest &request, int &) {
                transfer.module.fsm_SaveData(block(file, request.position));
            };
            for (const char *name : {"one.img", "two.img", "one.img"}) {
                transfer.done.clear();
                QVERIFY(transfer.run(name));
                QCOMPARE(transfer.received(), file);
            }
        }
    }

    void comparesVersions()
    {
        const auto compare = [](const char *server, const char *other) {
            const auto one = offering(QByteArray("{\"FIRMWARES\": [{\"version\": \"") + server + "\"}]}");
            return one->version() == QLatin1String(server) ? one->compareVersion(QLatin1String(other)) : -2;
        };
        QCOMPARE(compare("2.1", "2.1"), 0);
        QCOMPARE(compare("10.0", "9.9"), 1);
        QCOMPARE(compare("9.9", "10.0"), -1);
        QCOMPARE(compare("2.1", "2.1.5"), 1);         // whichever is the longer one
        QCOMPARE(compare("1.0", "99999999999.0"), 1); // no number
    }

    void readsTheIndex_data()
    {
        const TestTable<QByteArray, QString, QString> table("index", "version", "fileName");
        const QString none = "0.0";
        const auto entries = [](const QByteArray &list) {
            return "{\"FIRMWARES\": [" + list + "]}";
        };
        table.row("no JSON", "\xff<html>", none, QString());
        table.row("no objects", entries("1, null, [], \"2.0\""), none, QString());
        table.row("the newest, the first of equals",
                  entries(R"({"version": "9.9", "filename": "a"}, {"version": "10.0", "filename": "../b"},
                      {"version": "10.0", "filename": "c"}, {"version": "10.0.1", "filename": "d"})"),
                  "10.0", "../b");
        table.row(
            "repeated keys",
            R"({"FIRMWARES": [], "FIRMWARES": [{"version": "1.0", "version": "1.2", "filename": "f"}]})",
            "1.2", "f");
        const QByteArray many
            = QByteArray(R"({"version": "1.0", "filename": "f"},)").repeated(10000) + R"({"version": "1.1"})";
        table.row("too large", entries(many) + QByteArray(UdpServer::indexLimit, ' '), none, QString());
    }

    void readsTheIndex()
    {
        QFETCH(const QByteArray, index);
        const auto server = offering(index);
        QTEST(server->version(), "version");
        QTEST(server->fileName(), "fileName");
    }
};

QTEST_GUILESS_MAIN(UdpFileTest)
#include "udpfiletest.moc"
