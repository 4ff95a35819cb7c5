// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "runningprocess.h"
#include "config/jsonmodule.h"
#include "services/connectionfile.h"
#include "services/sessionservice.h"
#include "testdevice.h"

#include <QCoreApplication>
#include <QtTest>

#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString launchOnly = "--launch-only"; ///< makes this program a program that starts a client, for a test

/// Reads a named pipe to its end and returns the permissions that it had while its writer still waited.
mode_t readSlowly(const QByteArray &path)
{
    const int pipe = ::open(path.constData(), O_RDONLY);
    std::array<char, 4096> block{};
    struct stat status = {};
    for (bool first = true; ::read(pipe, block.data(), block.size()) > 0; first = false) {
        if (first)
            ::fstat(pipe, &status);
    }
    ::close(pipe);
    return status.st_mode & 0777;
}

} // namespace

/// What a session's start leaves to others, and what its end leaves behind.
class SessionServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void hidesTheDescriptionBeforeItIsWritten()
    {
        const QTemporaryDir folder;
        const QByteArray path = QFile::encodeName(folder.filePath("connect.json"));
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        QCOMPARE(::chmod(path.constData(), 0644), 0);
        mode_t mode = 0;
        std::thread reader([&] { mode = readSlowly(path); });
        // More than a pipe holds: it is not yet written when its first bytes are read.
        ConnectionFile::write(folder.filePath("connect.json"), {{"password", QString(1000000, 'x')}});
        reader.join();
        QCOMPARE(mode, mode_t{0600});
    }

    void clientEndsWithTheProgram()
    {
        const TestDevice device;
        device.setTool("/usr/bin/solva-client", "echo $$ >$KT_DEVICE_ROOT/tmp/pid; exec sleep 60");
        QProcess launcher;
        launcher.start(QCoreApplication::applicationFilePath(), {launchOnly});
        QTRY_VERIFY(device.read("/tmp/pid").endsWith('\n'));
        const int client = device.read("/tmp/pid").toInt();
        QVERIFY(isRunning(client));
        launcher.kill();
        QTRY_VERIFY(!isRunning(client));
        QTRY_COMPARE(launcher.state(), QProcess::NotRunning);
        // What tells the status report of the session is gone with the next start.
        QVERIFY(device.exists("/tmp/connect.json"));
        JsonModule configuration("config.json", true);
        const SessionService next(configuration);
        QVERIFY(!device.exists("/tmp/connect.json"));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(launchOnly)) {
        JsonModule configuration("config.json", true);
        SessionService session(configuration);
        session.startBrokerClient({}, QString());
        return QCoreApplication::exec();
    }
    SessionServiceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sessionservicetest.moc"
