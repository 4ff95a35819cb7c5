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
    void endsWithAChangedTotal();
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
    const auto row = [](const char *name, const char *versions, const QByteArray &wanted) {
        QTest::newRow(name) << QString::fromLatin1(versions).split(QLatin1Char(' ')) << wanted;
    };
    row("newest of three", "2.1 10.0 9.9", "10.0Office");
    row("first of equals, past one without an index", " 2.0 2.0", "2.0Office");
    row("an index that is none", "{] 2.0", "2.0Office");
    row("equal to ours", "1.0 0.9", "");
    row("neither an index nor a version of ours", "{]", "");
}

void UpdateModuleTest::takesTheNewest()
{
    QFETCH(const QStringList, versions);
    QFETCH(const QByteArray, wanted);
    offer(versions);
    const bool alone = versions.size() == 1;
    QCOMPARE(run(UpdateMethod::Latest, alone ? QStringLiteral("?.?.?") : QStringLiteral("1.0")),
             QStringList(wanted.isEmpty() ? nothingNewer : QString()));
    QCOMPARE(placed(), wanted.isEmpty() ? QByteArray() : image(QString()) + wanted);
    QCOMPARE(m_update->state(),
             wanted.isEmpty() ? UpdateModule::State::Failed : UpdateModule::State::ImageInPlace);
}

void UpdateModuleTest::takesTheNamedFile_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("ends");
    const auto row
        = [](const char *name, const char *server, const QByteArray &file, const QStringList &ends) {
              QTest::newRow(name) << QString::fromLatin1(server) << QString::fromLatin1(file) << ends;
          };
    row("by name", "Office", "2.0.img", {QString()});
    row("no such server", "office", "2.0.img", {QStringLiteral("No such server: office")});
    row("no such file", "10.77.0.22", "../2.0.img", {notFound, failed});
    row("127 characters", "10.77.0.22", QByteArray(127, 'n'), {QString()});
    row("128 characters", "10.77.0.22", QByteArray(128, 'n'), {notFound, failed});
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
    const QByteArray wanted = file.size() == 127 ? QByteArray("long") : image(QStringLiteral("2.0Office"));
    QCOMPARE(placed(), ends.first().isEmpty() ? wanted : QByteArray());
}

void UpdateModuleTest::endsWithAChangedTotal()
{
    offer({QStringLiteral("2.0")});
    m_device->write(imagePath, "old");
    CorvidFaults change;
    change.totalChangesFrom = 51200;
    m_servers->setFaults(addresses.first(), change);
    QCOMPARE(run(), QStringList(failed));
    QCOMPARE(placed(), QByteArray("old"));
    m_update->setIdleState();
    m_servers->setFaults(addresses.first(), {});
    QCOMPARE(run(), QStringList(QString()));
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
