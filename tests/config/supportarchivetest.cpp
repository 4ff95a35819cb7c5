// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/supportarchive.h"
#include "device/usbsticks.h"
#include "testdevice.h"

#include <QtTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

/// Gives this process mounts of its own, where the machine allows it and while it has one thread.
void enterOwnMounts()
{
    const QByteArray user = "0 " + QByteArray::number(getuid()) + " 1";
    const QByteArray group = "0 " + QByteArray::number(getgid()) + " 1";
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return;
    const QVector<QPair<QString, QByteArray>> answers{
        {"/proc/self/setgroups", "deny"}, {"/proc/self/uid_map", user}, {"/proc/self/gid_map", group}};
    for (const auto &answer : answers) {
        QFile file(answer.first);
        if (file.open(QIODevice::WriteOnly))
            file.write(answer.second);
    }
}

/// A stick of 16 KiB, plugged in for as long as the object lives.
struct Stick
{
    Stick(const TestDevice &device, const QString &devicePath, unsigned long flags = 0)
        : path(QFile::encodeName(device.path(devicePath)))
    {
        QDir().mkpath(device.path(devicePath));
        isMounted = mount("stick", path, "tmpfs", flags, "size=16k") == 0;
    }
    ~Stick() { umount2(path, MNT_DETACH); }
    Q_DISABLE_COPY(Stick)

    QByteArray path;
    bool isMounted = false;
};

QJsonObject document(const QString &hash, const QString &password)
{
    return {{"general settings", QJsonObject{{"device name", "hall"}, {"setup GUI password hash", hash}}},
            {"user autologon settings", QJsonObject{{"username", "kiosk"}, {"password", password}}}};
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

QStringList sticks(const TestDevice &device)
{
    QStringList found;
    for (const UsbStick &stick : UsbSticks::mounted())
        found += stick.path.mid(device.path("/media/").size()) + (stick.writable ? "" : " (locked)");
    return found;
}

} // namespace

class SupportArchiveTest : public QObject
{
    Q_OBJECT

private slots:
    void makesSafeNames()
    {
        const QDateTime time(QDate(2026, 3, 4), QTime(5, 6, 7));
        QCOMPARE(SupportArchive::fileName("hall_2-b", time), "kt964-support-hall_2-b-20260304-050607.tar.gz");
        QCOMPARE(SupportArchive::fileName("../../a b\n", time), "kt964-support--a-b--20260304-050607.tar.gz");
        QCOMPARE(SupportArchive::fileName("", time), "kt964-support-device-20260304-050607.tar.gz");
        QVERIFY(SupportArchive::fileName(QString(4000, 'x'), time).size() < 128);
    }

    void holdsTheLogTheDocumentAndTheVersions()
    {
        const TestDevice device;
        device.write("/media/STICK/other.txt", "mine");
        const QDateTime time(QDate(2026, 3, 4), QTime(5, 6, 7, 8), Qt::UTC);
        const QString text = QString::fromUtf8("grün --password=hunter2");
        const SupportArchive::Result result = SupportArchive::save(
            device.path("/media/STICK"), {{time, LogSeverity::Warning, "kt.device", text}},
            document("0123456789abcdef", "hunter2"));
        QCOMPARE(result.error, QString());
        QVERIFY2(result.fileName.startsWith("kt964-support-hall-"), qPrintable(result.fileName));
        QCOMPARE(filesIn(device.path("/media/STICK")), (QStringList{result.fileName, "other.txt"}));

        const QTemporaryDir unpacked;
        const QString archive = device.path("/media/STICK/") + result.fileName;
        QCOMPARE(QProcess::execute("tar", {"-xzf", archive, "-C", unpacked.path()}), 0);
        QCOMPARE(filesIn(unpacked.path()), (QStringList{"config.json", "log.txt", "versions.txt"}));
        QCOMPARE(contentOf(unpacked.filePath("config.json")), QJsonDocument(document("", "")).toJson());
        const QString log = QString::fromUtf8(contentOf(unpacked.filePath("log.txt")));
        QCOMPARE(QDateTime::fromString(log.section(' ', 0, 0), Qt::ISODateWithMs), time);
        QCOMPARE(log.section(' ', 1), QString::fromUtf8("warning kt.device: grün --password=***\n"));
        const QByteArray versions = contentOf(unpacked.filePath("versions.txt"));
        QVERIFY2(versions.contains(device.read("/etc/kt-release")) && versions.contains(qVersion()),
                 versions);
    }

    void leavesNothingOnAFullStick()
    {
        const TestDevice device;
        const Stick stick(device, "/media/STICK");
        if (!stick.isMounted)
            QSKIP("this machine does not let us mount");
        QVector<LogEntry> log;
        for (int line = 0; line < 2000; ++line) {
            const QByteArray noise
                = QCryptographicHash::hash(QByteArray::number(line), QCryptographicHash::Md5);
            log += {QDateTime(), LogSeverity::Debug, "kt", QString::fromLatin1(noise.toBase64())};
        }
        QCOMPARE(SupportArchive::save(device.path("/media/STICK"), log, {}).error,
                 "The archive could not be written to the USB stick: No space left on device.");
        QCOMPARE(filesIn(device.path("/media/STICK")), QStringList());
    }

    void findsSticks()
    {
        const TestDevice lab;
        QCOMPARE(sticks(lab), QStringList());
        lab.write("/media/user/INNER/file", "");
        QDir().mkpath(lab.path("/media/OUTER"));
        QFile::link(lab.path("/media/OUTER"), lab.path("/media/ALIAS"));
        QCOMPARE(sticks(lab), (QStringList{"OUTER", "user/INNER"}));

        const TestDevice device;
        const Stick locked(device, "/media/A", MS_RDONLY);
        const Stick outer(device, "/media/B");
        const Stick inner(device, "/media/user/C");
        if (!inner.isMounted)
            QSKIP("this machine does not let us mount");
        QDir().mkpath(device.path("/media/B/photos"));
        QCOMPARE(sticks(device), (QStringList{"B", "user/C", "A (locked)"}));
    }
};

int main(int argc, char *argv[])
{
    enterOwnMounts();
    QCoreApplication application(argc, argv);
    SupportArchiveTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "supportarchivetest.moc"
