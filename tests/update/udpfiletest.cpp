// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/udpfilemodule.h"
#include "update/udpserver.h"

#include "testdevice.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

const QHostAddress ours(QStringLiteral("10.77.0.21"));
const QString notFound = QStringLiteral("Download error: File not found");
const QString image = QStringLiteral("fw.img");

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
        return done.count() > 0 || done.wait(10000);
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

} // namespace

/// The transfer of one file, fed by hand, and what a server's index is taken for.
class UdpFileTest : public QObject
{
    Q_OBJECT

private slots:
    void fetches_data();
    void fetches();
    void failsWithoutAFile_data();
    void failsWithoutAFile();
    void asksThreeTimes();
    void takesNoStragglerForTheBeginning();
    void comparesVersions();
    void readsTheIndex_data();
    void readsTheIndex();
};

void UdpFileTest::fetches_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<quint32>>("asked");
    QTest::newRow("one block") << 1024 << QList<quint32>({0});
    QTest::newRow("one byte more") << 1025 << QList<quint32>({0, 1024});
    QTest::newRow("three blocks") << 3000 << QList<quint32>({0, 1024, 2048});
}

/// Each block arrives among others that it does not wait for, and in answer to a request that was not sent.
void UdpFileTest::fetches()
{
    QFETCH(const int, size);
    const QByteArray file = content(size);
    Transfer transfer;
    const auto feed = [&](const UdpFileReply &reply) {
        transfer.module.fsm_SaveData(reply);
    };
    transfer.answer = [&](const UdpFileRequest &request, int &error) {
        error = 1;
        feed(block(file, request.position, QHostAddress(QStringLiteral("10.77.0.22"))));
        feed(block(file, request.position + 1024));
        feed(block(file, request.position, QHostAddress(QStringLiteral("::ffff:10.77.0.21"))));
        feed(block(file, request.position));
    };
    feed(block(file, 0));
    QVERIFY(transfer.run());
    QCOMPARE(transfer.received(), file);
    QTEST(transfer.asked, "asked");
    QCOMPARE(transfer.messages.count(), 0);
    QCOMPARE(transfer.module.state(), UdpFileModule::State::Idle);
}

void UdpFileTest::failsWithoutAFile_data()
{
    QTest::addColumn<QString>("fault");
    for (const char *fault : {"total changes", "refused", "too large", "disk full", "empty block"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void UdpFileTest::failsWithoutAFile()
{
    QFETCH(const QString, fault);
    const QByteArray file = content(5000);
    Transfer transfer;
    if (fault == QLatin1String("too large"))
        transfer.module.setSizeLimit(4999);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{3000, before.rlim_max};
    if (fault == QLatin1String("disk full"))
        ::setrlimit(RLIMIT_FSIZE, &limit);
    transfer.answer = [&](const UdpFileRequest &request, int &error) {
        UdpFileReply reply = block(file, request.position);
        if (fault == QLatin1String("total changes") && request.position == 2048)
            ++reply.total;
        if (fault == QLatin1String("empty block") && request.position == 2048)
            reply.data.clear();
        if (fault == QLatin1String("refused"))
            error = -1;
        else
            transfer.module.fsm_SaveData(reply);
    };
    const bool ended = transfer.run();
    ::setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(ended);
    QVERIFY(!transfer.taken);
    QCOMPARE(transfer.messages.count(), 0);
    QCOMPARE(QDir(transfer.device.path(QStringLiteral("/var/lib/updates"))).entryList(QDir::Files),
             QStringList());
}

void UdpFileTest::asksThreeTimes()
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

void UdpFileTest::takesNoStragglerForTheBeginning()
{
    const QByteArray index("{\"FIRMWARES\": []}");
    const QByteArray file = content(2000);
    Transfer transfer;
    transfer.answer = [&](const UdpFileRequest &request, int &) {
        // The answer to the question before comes once more, as a network may have it.
        transfer.module.fsm_SaveData(block(index, 0));
        if (request.fileName == image)
            transfer.module.fsm_SaveData(block(file, request.position));
    };
    QVERIFY(transfer.run(QStringLiteral("kt-update.txt")));
    transfer.done.clear();
    QVERIFY(transfer.run());
    QCOMPARE(transfer.received(), file);
}

/// A server whose index offers these versions, in their order.
static std::unique_ptr<UdpServer> offering(const QByteArray &index)
{
    auto server = std::make_unique<UdpServer>(ours, QStringLiteral("Office"));
    QTemporaryFile file;
    if (file.open() && file.write(index) == index.size())
        server->setRxUpdateJson(&file);
    return server;
}

void UdpFileTest::comparesVersions()
{
    const auto compare = [](const char *server, const char *other) {
        const auto one = offering(QByteArray("{\"FIRMWARES\": [{\"version\": \"") + server + "\"}]}");
        return one->version() == QLatin1String(server) ? one->compareVersion(QLatin1String(other)) : -2;
    };
    QCOMPARE(compare("2.1", "2.1"), 0);
    QCOMPARE(compare("10.0", "9.9"), 1);
    QCOMPARE(compare("9.9", "10.0"), -1);
    QCOMPARE(compare("2.1.5", "2.1"), 1);
    QCOMPARE(compare("2.1", "2.1.5"), 1); // whichever is the longer one
    QCOMPARE(compare("2.x", "2.0"), 0);
    QCOMPARE(compare("1..1", "1.0.1"), 0);
    QCOMPARE(compare("1.0", "99999999999.0"), 1); // no number
}

void UdpFileTest::readsTheIndex_data()
{
    QTest::addColumn<QByteArray>("index");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("fileName");
    const QString none = QStringLiteral("0.0");
    const auto entries = [](const QByteArray &list) {
        return "{\"FIRMWARES\": [" + list + "]}";
    };
    QTest::newRow("no JSON") << QByteArray("\xff<html>") << none << QString();
    QTest::newRow("no objects") << entries("1, null, [], \"2.0\"") << none << QString();
    QTest::newRow("no text") << entries(R"({"version": 2.5, "filename": "n"})") << none << QString();
    QTest::newRow("the newest, the first of equals")
        << entries(R"({"version": "9.9", "filename": "a"}, {"version": "10.0", "filename": "../b"},
                      {"version": "10.0", "filename": "c"}, {"version": "10.0.1", "filename": "d"})")
        << QStringLiteral("10.0") << QStringLiteral("../b");
    const QByteArray many
        = QByteArray(R"({"version": "1.0", "filename": "f"},)").repeated(10000) + R"({"version": "1.1"})";
    QTest::newRow("10,000 entries") << entries(many) << QStringLiteral("1.1") << QString();
    QTest::newRow("too large") << entries(many + QByteArray(UdpServer::indexLimit, ' ')) << none << QString();
}

void UdpFileTest::readsTheIndex()
{
    QFETCH(const QByteArray, index);
    const auto server = offering(index);
    QTEST(server->version(), "version");
    QTEST(server->fileName(), "fileName");
}

QTEST_GUILESS_MAIN(UdpFileTest)
#include "udpfiletest.moc"
