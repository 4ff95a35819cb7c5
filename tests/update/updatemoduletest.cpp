// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/updatemodule.h"

#include "lab-peers/corvidserver.h"
#include "management/devicestatus.h"
#include "onlyinnamespace.h"
#include "testdevice.h"
#include "update/terminalservermodule.h"
#include "testtable.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

namespace {

const QList<QHostAddress> addresses{QHostAddress("10.77.0.21"), QHostAddress("10.77.0.22"),
                                    QHostAddress("10.77.0.23")};
const QString imagePath = "/var/lib/updates/new-firmware.img";
const QString nothingNewer = "The update was aborted because newer firmware was not found.";
const QString notFound = "Download error: File not found";
const QString failed = "Download error";

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
    void init()
    {
        m_device = std::make_unique<TestDevice>();
        m_endpoint = std::make_unique<TerminalServerModule>(m_status);
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

    void cleanup()
    {
        m_update.reset();
        m_endpoint.reset();
        m_servers.reset();
        const QStringList left = QDir(m_device->path("/var/lib/updates")).entryList(QDir::Files);
        QVERIFY(left.isEmpty() || left == QStringList("new-firmware.img"));
    }

    void takesTheNewest_data()
    {
        // a version and a server, or nothing
        const TestTable<QString, QByteArray> table("versions", "wanted");
        table.row("newest of three", "2.1 10.0 9.9", "10.0Office");
        table.row("first of equals, past one without an index", " 2.0 2.0", "2.0Office");
        table.row("equal to ours", "1.0 0.9", "");
        table.row("neither an index nor a version of ours", "{]", "");
    }

    void takesTheNewest()
    {
        QFETCH(const QString, versions);
        QFETCH(const QByteArray, wanted);
        offer(versions.split(' '));
        QCOMPARE(run(UpdateMethod::Latest, versions.contains(' ') ? "1.0" : "?.?.?"),
                 QStringList(wanted.isEmpty() ? nothingNewer : QString()));
        QCOMPARE(placed(), wanted.isEmpty() ? QByteArray() : image(QString()) + wanted);
        QCOMPARE(m_update->state(),
                 wanted.isEmpty() ? UpdateModule::State::Failed : UpdateModule::State::ImageInPlace);
    }

    void takesTheNamedFile_data()
    {
        const TestTable<QString, QString, QStringList> table("server", "file", "ends");
        table.row("by name", "Office", "2.0.img", {QString()});
        table.row("no such server", "office", "2.0.img", {"No such server: office"});
        table.row("127 characters", "10.77.0.22", QString(127, 'n'), {QString()});
        table.row("128 characters", "10.77.0.22", QString(128, 'n'), {notFound, failed});
    }

    void takesTheNamedFile()
    {
        QFETCH(const QString, server);
        QFETCH(const QString, file);
        QFETCH(const QStringList, ends);
        offer({"1.0", "2.0"});
        m_servers->files(addresses.at(1)).add(QString(127, 'n'), "long");
        m_update->setCorvidServerUpdate(server, file);
        QCOMPARE(run(UpdateMethod::CorvidServer), ends);
        const QByteArray wanted = file.size() == 127 ? QByteArray("long") : image("2.0Office");
        QCOMPARE(placed(), ends.first().isEmpty() ? wanted : QByteArray());
    }

    void findsNobody()
    {
        const QString nobody = "Download error: No Corvid Servers found";
        QCOMPARE(run(), QStringList(nobody));
        QCOMPARE(m_update->state(), UpdateModule::State::WaitForServers);
        // Somebody else's search is not the answer any more.
        QSignalSpy progress(m_update.get(), &UpdateModule::forwardProgress);
        m_update->setServerList({{"Late", addresses.first()}});
        QCoreApplication::processEvents();
        QCOMPARE(progress.count(), 0);
    }

private:
    /// Each version is a server's; an empty one has no index, and one that begins with "{" is the index
    /// itself.
    void offer(const QStringList &versions)
    {
        const QStringList names{"Accounts", "Office", "Ward"};
        for (int i = 0; i < versions.size(); ++i) {
            m_servers->addServer(names.at(i), addresses.at(i));
            CorvidFiles &files = m_servers->files(addresses.at(i));
            const QString &version = versions.at(i);
            if (version.startsWith('{'))
                files.add("kt-update.txt", version.toLatin1());
            else if (!version.isEmpty())
                files.addFirmware(version, version + ".img");
            files.add(version + ".img", image(version) + names.at(i).toLatin1());
        }
        QVERIFY(m_servers->listen());
    }

    /// What an update ends with: all its final messages.
    QStringList run(UpdateMethod method = UpdateMethod::Latest, const QString &current = "1.0")
    {
        QSignalSpy ended(m_update.get(), &UpdateModule::downloadFinished);
        m_update->setMethod(method);
        m_update->setCurrentVersion(current);
        m_update->startUpdate();
        QStringList ends;
        while ((ends.isEmpty() || ends.last() == notFound)
               && (ended.count() > ends.size() || ended.wait(TestGroup::waitMs())))
            ends += ended.at(ends.size()).at(0).toString();
        return ends;
    }

    QByteArray placed() const { return m_device->read(imagePath); }

    std::unique_ptr<TestDevice> m_device;
    DeviceStatus m_status;
    std::unique_ptr<TerminalServerModule> m_endpoint;
    std::unique_ptr<UpdateModule> m_update;
    std::unique_ptr<CorvidServer> m_servers;
};

QTEST_GUILESS_MAIN(UpdateModuleTest)
#include "updatemoduletest.moc"
