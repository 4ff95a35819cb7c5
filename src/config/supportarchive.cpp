// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/supportarchive.h"

#include "config/keys.h"
#include "config/secrets.h"
#include "device/commands.h"
#include "device/durablefile.h"
#include "device/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTemporaryDir>

namespace {

constexpr int longestDeviceName = 63;
constexpr qint64 releaseLimit = 64 * 1024;
const char archiveName[] = "archive.tar.gz";
const QStringList memberNames{QStringLiteral("log.txt"), QStringLiteral("config.json"),
                              QStringLiteral("versions.txt")};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(SupportArchive)
};

QByteArray logText(const QVector<LogEntry> &log, const QJsonObject &document)
{
    QString lines;
    for (const LogEntry &entry : log)
        lines += entry.line() + QLatin1Char('\n');
    return Secrets::redacted(lines, Secrets::valuesIn(document)).toUtf8();
}

QByteArray versionsText()
{
    const QString facts
        = QStringLiteral("program: %1 %2\nQt: %3\nkernel: %4 %5\n\n")
              .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion(),
                   QLatin1String(qVersion()), QSysInfo::kernelType(), QSysInfo::kernelVersion());
    QFile release(Paths::release());
    const QByteArray content
        = release.open(QIODevice::ReadOnly) ? release.read(releaseLimit) : QByteArray("not found\n");
    return facts.toUtf8() + "/etc/kt-release:\n" + content;
}

QString stage(const QDir &folder, const QVector<LogEntry> &log, const QJsonObject &document)
{
    const QByteArray contents[]
        = {logText(log, document), QJsonDocument(Secrets::blanked(document)).toJson(), versionsText()};
    for (int member = 0; member < memberNames.size(); ++member) {
        QString error = DurableFile::write(folder.filePath(memberNames.at(member)), contents[member]);
        if (!error.isEmpty())
            return error;
    }
    return QString();
}

/// The archive of the files in the folder; empty if it could not be made.
QByteArray pack(const QDir &folder)
{
    QProcess tar;
    tar.setWorkingDirectory(folder.path());
    tar.setProcessEnvironment(Commands::environment());
    tar.setStandardInputFile(QProcess::nullDevice());
    tar.start(Paths::program(QStringLiteral("tar")),
              QStringList{QStringLiteral("-czf"), QLatin1String(archiveName)} + memberNames);
    QFile archive(folder.filePath(QLatin1String(archiveName)));
    const bool made = tar.waitForFinished(Commands::timeLimitMs) && tar.exitStatus() == QProcess::NormalExit
        && tar.exitCode() == 0;
    return made && archive.open(QIODevice::ReadOnly) ? archive.readAll() : QByteArray();
}

} // namespace

namespace SupportArchive {

QString fileName(const QString &deviceName, const QDateTime &time)
{
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_-]+"));
    QString safe = deviceName.left(longestDeviceName).replace(unsafe, QStringLiteral("-"));
    if (safe.isEmpty())
        safe = QStringLiteral("device");
    return QStringLiteral("kt964-support-%1-%2.tar.gz")
        .arg(safe, time.toString(QStringLiteral("yyyyMMdd-hhmmss")));
}

Result save(const QString &folder, const QVector<LogEntry> &log, const QJsonObject &document)
{
    const QTemporaryDir staging;
    QString error = staging.isValid() ? stage(QDir(staging.path()), log, document) : staging.errorString();
    if (!error.isEmpty())
        return {QString(), Texts::tr("The archive could not be made: %1.").arg(error)};
    const QByteArray archive = pack(QDir(staging.path()));
    if (archive.isEmpty())
        return {QString(), Texts::tr("The archive could not be made.")};
    const QString deviceName = document.value(Key::general).toObject().value(Key::deviceName).toString();
    const QString name = fileName(deviceName, QDateTime::currentDateTime());
    error = DurableFile::write(folder + QLatin1Char('/') + name, archive);
    if (!error.isEmpty())
        return {QString(), Texts::tr("The archive could not be written to the USB stick: %1.").arg(error)};
    return {name, QString()};
}

} // namespace SupportArchive
