// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/supportarchive.h"
#include "device/usbsticks.h"
#include "fulldisk.h"
#include "testdevice.h"

#include <QtTest>

namespace {

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

    void leavesNothingOnAFullStick()
    {
        const TestDevice device;
        device.write("/media/STICK/other.txt", "mine");
        device.setTool("/usr/bin/tar", "ulimit -S -f unlimited; head -c 30000 /dev/zero >$2");
        const FullDisk full(20000);
        const SupportArchive::Result result = SupportArchive::save(device.path("/media/STICK"), {}, {});
        QVERIFY2(result.error.startsWith("The archive could not be written to the USB stick: "),
                 qPrintable(result.error));
        QCOMPARE(filesIn(device.path("/media/STICK")), QStringList("other.txt"));
    }

    void findsSticks()
    {
        const TestDevice device;
        QVERIFY(UsbSticks::mounted().isEmpty());
        device.write("/media/user/INNER/file", "");
        QDir().mkpath(device.path("/media/OUTER"));
        QFile::link(device.path("/media/OUTER"), device.path("/media/ALIAS"));
        QStringList found;
        for (const UsbStick &stick : UsbSticks::mounted())
            found += stick.path;
        QCOMPARE(found, (QStringList{device.path("/media/OUTER"), device.path("/media/user/INNER")}));
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
};

QTEST_GUILESS_MAIN(SupportArchiveTest)
#include "supportarchivetest.moc"
