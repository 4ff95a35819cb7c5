// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/firmwareimage.h"

#include "device/durablefile.h"
#include "device/paths.h"

#include <QDir>
#include <QLoggingCategory>
#include <QStorageInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcImage, "kt.update.image")

namespace FirmwareImage {

namespace {

constexpr qint64 stepBytes = 4 * 1024 * 1024;
/// A tool that prints dots every few seconds does not write more in between.
constexpr qint64 toolMargin = 64 * 1024 * 1024;

QString unfinishedMark()
{
    return Paths::firmwareImage() + QLatin1String(".unfinished");
}

/// The earlier image while a tool writes the new one.
QString imageAside()
{
    return Paths::firmwareImage() + QLatin1String(".earlier");
}

qint64 freeBytes()
{
    return QStorageInfo(Paths::updates()).bytesAvailable();
}

/// Renames a file, replacing another.
bool rename(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

/// Starts to write new data to the disk, and waits for the data of the previous call: at most two steps are
/// pending.
bool sendToDisk(const QTemporaryFile &file)
{
    constexpr unsigned int how = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE;
    // A file system that does not support this writes in its own time.
    return ::sync_file_range(file.handle(), 0, 0, how) == 0
        || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

} // namespace

std::unique_ptr<QTemporaryFile> stage()
{
    QDir().mkpath(Paths::updates());
    auto file = std::make_unique<QTemporaryFile>(Paths::firmwareImage() + QLatin1String(".XXXXXX"));
    if (file->open())
        return file;
    qCCritical(lcImage, "%s: file error [%d] %s", Q_FUNC_INFO, file->error(),
               qPrintable(file->errorString()));
    return nullptr;
}

bool append(QTemporaryFile &file, const QByteArray &bytes)
{
    const qint64 before = file.pos() / stepBytes;
    if (file.write(bytes) != bytes.size())
        return false;
    return file.pos() / stepBytes == before || (file.flush() && sendToDisk(file));
}

bool fits(qint64 bytes)
{
    const qint64 room = freeBytes() + QFileInfo(Paths::firmwareImage()).size();
    if (room < bytes)
        qCCritical(lcImage) << "no room for" << bytes << "bytes:" << room << "are free";
    return room >= bytes;
}

bool makeRoom(qint64 bytes)
{
    if (!fits(bytes))
        return false;
    if (freeBytes() < bytes)
        QFile::remove(Paths::firmwareImage());
    return freeBytes() >= bytes;
}

bool place(QTemporaryFile &file)
{
    const QString image = Paths::firmwareImage();
    const QString name = file.fileName();
    if (!file.flush() || ::fsync(file.handle()) != 0 || !rename(name, image)) {
        qCCritical(lcImage).noquote() << "cannot put" << image << "in place:" << std::strerror(errno);
        return false;
    }
    file.setAutoRemove(false);
    DurableFile::synchronise(Paths::updates());
    qCInfo(lcImage).noquote() << image << "is in place," << file.size() << "bytes";
    return true;
}

bool prepareForTool()
{
    QDir().mkpath(Paths::updates());
    if (!DurableFile::write(unfinishedMark(), QByteArray()).isEmpty())
        return false;
    const QString image = Paths::firmwareImage();
    if (!QFile::exists(image) || rename(image, imageAside()))
        return true;
    QFile::remove(unfinishedMark());
    return false;
}

void makeRoomForTool()
{
    if (freeBytes() < toolMargin && QFile::remove(imageAside()))
        qCInfo(lcImage) << "removed the earlier image: the new one does not fit beside it";
}

bool finishTool(bool succeeded)
{
    const QString image = Paths::firmwareImage();
    const bool whole = succeeded && QFileInfo(image).isFile() && QFileInfo(image).size() > 0;
    if (whole)
        DurableFile::synchronise(image);
    else if (!rename(imageAside(), image))
        QFile::remove(image);
    QFile::remove(unfinishedMark());
    QFile::remove(imageAside());
    return whole;
}

void removeStale()
{
    if (QFile::exists(unfinishedMark()))
        finishTool(false);
    QFile::remove(imageAside());
    QDir folder(Paths::updates());
    const QString sixCharacters = QStringLiteral(".??????"); // the ending of a temporary file
    const QStringList patterns{QFileInfo(Paths::firmwareImage()).fileName() + sixCharacters,
                               QFileInfo(unfinishedMark()).fileName() + sixCharacters};
    for (const QString &name : folder.entryList(patterns, QDir::Files)) {
        qCInfo(lcImage).noquote() << "removing the incomplete" << name;
        folder.remove(name);
    }
}

} // namespace FirmwareImage
