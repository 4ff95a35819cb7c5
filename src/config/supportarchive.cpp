// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/supportarchive.h"

#include "config/keys.h"
#include "config/secrets.h"
#include "device/commands.h"
#include "device/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int longestDeviceName = 63;
constexpr qint64 releaseLimit = 64 * 1024;
constexpr mode_t readableByAll = 0644;
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

/// What went wrong with a file, in the words of the system; empty when nothing did.
QString writeAll(QFile &file, const QByteArray &content)
{
    // A medium that fills up takes a part without complaint, and complains about the rest.
    qint64 written = 0;
    while (written < content.size()) {
        const qint64 taken = file.write(content.constData() + written, content.size() - written);
        if (taken <= 0)
            return file.errorString();
        written += taken;
    }
    return file.flush() ? QString() : file.errorString();
}

QString stage(const QDir &folder, const QVector<LogEntry> &log, const QJsonObject &document)
{
    const QByteArray contents[]
        = {logText(log, document), QJsonDocument(Secrets::blanked(document)).toJson(), versionsText()};
    for (int member = 0; member < memberNames.size(); ++member) {
        QFile file(folder.filePath(memberNames.at(member)));
        if (!file.open(QIODevice::WriteOnly))
            return file.errorString();
        const QString error = writeAll(file, contents[member]);
        if (!error.isEmpty())
            return error;
    }
    return QString();
}

/// The archive of what stands in the folder; nothing when it could not be made.
QByteArray pack(const QDir &folder)
{
    // A query answers with what was printed, not with a status.
    const QString script = QStringLiteral("cd \"$1\" && shift && tar -czf \"$@\" && echo made");
    QStringList arguments{QStringLiteral("-c"), script, QStringLiteral("sh"), folder.path(),
                          QLatin1String(archiveName)};
    arguments += memberNames;
    QFile archive(folder.filePath(QLatin1String(archiveName)));
    if (Commands::query(QStringLiteral("sh"), arguments, Commands::timeLimitMs) != "made\n"
        || !archive.open(QIODevice::ReadOnly))
        return QByteArray();
    return archive.readAll();
}

QString systemError()
{
    return qt_error_string(errno);
}

/// Puts a file in place as a whole or not at all; the error, when there was one.
QString publish(const QString &folder, const QString &name, const QByteArray &content)
{
    QTemporaryFile file(folder + QLatin1String("/.kt964-support-XXXXXX"));
    if (!file.open())
        return file.errorString();
    const QString error = writeAll(file, content);
    if (!error.isEmpty())
        return error;
    // A medium without permissions refuses this, and does not need it.
    if (::fchmod(file.handle(), readableByAll) != 0)
        errno = 0;
    if (::fsync(file.handle()) != 0)
        return systemError();
    const QByteArray target = QFile::encodeName(folder + QLatin1Char('/') + name);
    if (std::rename(QFile::encodeName(file.fileName()).constData(), target.constData()) != 0)
        return systemError();
    file.setAutoRemove(false);
    if (::syncfs(file.handle()) == 0)
        return QString();
    const QString syncError = systemError();
    ::unlink(target.constData());
    return syncError;
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
    error = publish(folder, name, archive);
    if (!error.isEmpty())
        return {QString(), Texts::tr("The archive could not be written to the USB stick: %1.").arg(error)};
    return {name, QString()};
}

} // namespace SupportArchive
