// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/updatemodule.h"

#include "lab-peers/corvidserver.h"
#include "lab-peers/linkproxy.h"
#include "testdevice.h"
#include "update/terminalservermodule.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

namespace {

const QList<QHostAddress> addresses{QHostAddress(QStringLiteral("10.77.0.21")),
                                    QHostAddress(QStringLiteral("10.77.0.22")),
                                    QHostAddress(QStringLiteral("10.77.0.23"))};
const QString imagePath = QStringLiteral("/var/lib/updates/new-firmware.img");
const QString nothingNewer = QStringLiteral("The update was aborted because newer firmware was not found.");
const QString notFound = QStringLiteral("Download error: File not found");
const QString failed = QStringLiteral("Download error");

QByteArray image(const QString &version)
{
    return QByteArray(100000, 'x') + version.toLatin1();
}

} // namespace

/// A whole update, over the endpoint, from three Corvid servers in the lab's network namespace: "Accounts",
/// "Office" and "Ward", which each offer a file "VERSION.img".
class UpdateModuleTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void takesTheNewest_data();
    void takesTheNewest();
    void takesTheNamedFile_data();
    void takesTheNamedFile();
    void endsWithTheServer_data();
    void endsWithTheServer();
    void copesWithTheNetwork();
    void copesWithABadLink();
    void findsNobody();

private:
    void offer(const QStringList &versions);
    QStringList run(UpdateMethod method = UpdateMethod::Latest,
                    const QString &current = QStringLiteral("1.0"));
    QByteArray placed() const { return m_device->read(imagePath); }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<TerminalServerModule> m_endpoint;
    std::unique_ptr<UpdateModule> m_update;
    std::unique_ptr<CorvidServer> m_servers;
};

void UpdateModuleTest::initTestCase()
{
    if (qgetenv("KT_LAB_NAMESPACE") != "inside")
        QSKIP("broadcasts belong into the lab's network namespace");
}

void UpdateModuleTest::init()
{
    m_device = std::make_unique<TestDevice>();
    m_endpoint = std::make_unique<TerminalServerModule>();
    m_update = std::make_unique<UpdateModule>();
    m_update->setTimeouts(100, 1000);
    m_servers = std::make_unique<CorvidServer>();
    connect(m_update.get(), &UpdateModule::getServerList, m_endpoint.get(), [this] {
        int error = 0;
        m_endpoint->findTerminalServer(error);
    });
    connect(m_endpoint.get(), &TerminalServerModule::sendServerList, m_update.get(),
            &UpdateModule::setServerList);
    connect(m_update.get(), &UpdateModule::ask_WantUdpFileData, m_endpoint.get(),
            &TerminalServerModule::getUdpFileData);
    connect(m_endpoint.get(), &TerminalServerModule::ask_HasUdpFileData, m_update.get(),
            &UpdateModule::ask_HasUdpFileData);
}

void UpdateModuleTest::cleanup()
{
    m_update.reset();
    m_endpoint.reset();
    m_servers.reset();
    const QStringList left = QDir(m_device->path(QStringLiteral("/var/lib/updates"))).entryList(QDir::Files);
    QVERIFY(left.isEmpty() || left == QStringList(QStringLiteral("new-firmware.img")));
}

/// Each version is a server's; an empty one has no index, and one that begins with "{" is the index itself.
void UpdateModuleTest::offer(const QStringList &versions)
{
    const QStringList names{QStringLiteral("Accounts"), QStringLiteral("Office"), QStringLiteral("Ward")};
    for (int i = 0; i < versions.size(); ++i) {
        m_servers->addServer(names.at(i), addresses.at(i));
        CorvidFiles &files = m_servers->files(addresses.at(i));
        const QString &version = versions.at(i);
        if (version.startsWith(QLatin1Char('{')))
            files.add(QStringLiteral("kt-update.txt"), version.toLatin1());
        else if (!version.isEmpty())
            files.addFirmware(version, version + QStringLiteral(".img"));
        files.add(version + QStringLiteral(".img"), image(version) + names.at(i).toLatin1());
    }
    QVERIFY(m_servers->listen());
}

/// What an update ends with: all its final messages.
QStringList UpdateModuleTest::run(UpdateMethod method, const QString &current)
{
    QSignalSpy ended(m_update.get(), &UpdateModule::downloadFinished);
    m_update->setMethod(method);
    m_update->setCurrentVersion(current);
    m_update->startUpdate();
    QStringList ends;
    while ((ends.isEmpty() || ends.last() == notFound) && (ended.count() > ends.size() || ended.wait(20000)))
        ends += ended.at(ends.size()).at(0).toString();
    return ends;
}

void UpdateModuleTest::takesTheNewest_data()
{
    QTest::addColumn<QStringList>("versions");
    QTest::addColumn<QByteArray>("wanted"); // a version and a server, or nothing
    const auto row = [](const char *name, const QStringList &versions, const QByteArray &wanted) {
        QTest::newRow(name) << versions << wanted;
    };
    const auto text = [](const char *version) {
        return QString::fromLatin1(version);
    };
    row("newest of three", {text("2.1"), text("10.0"), text("9.9")}, "10.0Office");
    row("first of equals, past one without and one with no index", {QString(), text("2.0"), text("2.0")},
        "2.0Office");
    row("an index that is none", {text("{]"), text("2.0")}, "2.0Office");
    row("equal to ours", {text("1.0"), text("0.9")}, "");
    row("no index at all", {QString()}, "");
}

void UpdateModuleTest::takesTheNewest()
{
    QFETCH(const QStringList, versions);
    QFETCH(const QByteArray, wanted);
    offer(versions);
    QCOMPARE(run(), QStringList(wanted.isEmpty() ? nothingNewer : QString()));
    QCOMPARE(placed(), wanted.isEmpty() ? QByteArray() : image(QString()) + wanted);
    QCOMPARE(m_update->state(),
             wanted.isEmpty() ? UpdateModule::State::Failed : UpdateModule::State::ImageInPlace);
}

void UpdateModuleTest::takesTheNamedFile_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("ends");
    const QString address = addresses.at(1).toString();
    const QString file = QStringLiteral("2.0.img");
    const QStringList lost{notFound, failed};
    QTest::newRow("by name") << QStringLiteral("Office") << file << QStringList(QString());
    QTest::newRow("by address") << address << file << QStringList(QString());
    QTest::newRow("no such server") << QStringLiteral("office") << file
                                    << QStringList(QStringLiteral("No such server: office"));
    QTest::newRow("no such file") << address << QStringLiteral("../2.0.img") << lost;
    QTest::newRow("127 characters") << address << QString(127, QLatin1Char('n')) << QStringList(QString());
    QTest::newRow("128 characters") << address << QString(128, QLatin1Char('n')) << lost;
}

void UpdateModuleTest::takesTheNamedFile()
{
    QFETCH(const QString, server);
    QFETCH(const QString, file);
    QFETCH(const QStringList, ends);
    offer({QStringLiteral("1.0"), QStringLiteral("2.0")});
    m_servers->files(addresses.at(1)).add(QString(127, QLatin1Char('n')), "long");
    m_update->setCorvidServerUpdate(server, file);
    QCOMPARE(run(UpdateMethod::CorvidServer), ends);
    const bool named = file.size() == 127;
    const QByteArray wanted = named ? QByteArray("long") : image(QStringLiteral("2.0Office"));
    QCOMPARE(placed(), ends.first().isEmpty() ? wanted : QByteArray());
}

void UpdateModuleTest::endsWithTheServer_data()
{
    QTest::addColumn<int>("silentFrom");
    QTest::addColumn<int>("changesFrom");
    QTest::addColumn<QStringList>("ends");
    QTest::newRow("falls silent") << 51200 << -1 << QStringList({notFound, failed});
    QTest::newRow("changes the total") << -1 << 51200 << QStringList(failed);
}

void UpdateModuleTest::endsWithTheServer()
{
    QFETCH(const int, silentFrom);
    QFETCH(const int, changesFrom);
    offer({QStringLiteral("2.0")});
    m_device->write(imagePath, "old");
    CorvidFaults faults;
    faults.silentFrom = silentFrom;
    faults.totalChangesFrom = changesFrom;
    m_servers->setFaults(addresses.first(), faults);
    QTEST(run(), "ends");
    QCOMPARE(placed(), QByteArray("old"));
    m_update->setIdleState();
    m_servers->setFaults(addresses.first(), {});
    QCOMPARE(run(), QStringList(QString()));
}

void UpdateModuleTest::copesWithTheNetwork()
{
    offer({QStringLiteral("2.0"), QStringLiteral("1.5")});
    CorvidFaults faults;
    faults.loss = 3;
    faults.duplicates = 50;
    faults.reordering = 3;
    for (int i = 0; i < 2; ++i)
        m_servers->setFaults(addresses.at(i), faults);
    QCOMPARE(run(), QStringList(QString()));
    QCOMPARE(placed(), image(QStringLiteral("2.0Accounts")));
}

/// What is lost, late and twice there is lost both ways, discovery and all.
void UpdateModuleTest::copesWithABadLink()
{
    const QHostAddress hidden(QStringLiteral("127.0.0.25"));
    m_servers->addServer(QStringLiteral("Far away"), hidden);
    m_servers->files(hidden).add(QStringLiteral("far.img"), image(QStringLiteral("far")));
    LinkFaults faults;
    faults.dropped = 3;
    faults.duplicated = 20;
    faults.heldBack = 10;
    LinkProxy link(hidden, faults);
    QVERIFY2(m_servers->listen() && link.listen(addresses.at(2)), qPrintable(link.errorString()));
    m_update->setCorvidServerUpdate(QStringLiteral("Far away"), QStringLiteral("far.img"));
    QCOMPARE(run(UpdateMethod::CorvidServer), QStringList(QString()));
    QCOMPARE(placed(), image(QStringLiteral("far")));
    QVERIFY(link.requests().dropped > 0 && link.requests().duplicated > 0);
}

void UpdateModuleTest::findsNobody()
{
    const QString nobody = QStringLiteral("Download error: No Corvid Servers found");
    QCOMPARE(run(), QStringList(nobody));
    QCOMPARE(m_update->state(), UpdateModule::State::WaitForServers);
    // Somebody else's search is not the answer any more.
    QSignalSpy progress(m_update.get(), &UpdateModule::forwardProgress);
    m_update->setServerList({{QStringLiteral("Late"), addresses.first()}});
    QCoreApplication::processEvents();
    QCOMPARE(progress.count(), 0);
}

QTEST_GUILESS_MAIN(UpdateModuleTest)
#include "updatemoduletest.moc"
