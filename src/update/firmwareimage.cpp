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

/// What the tool writes before it renames it to the image.
QString toolsPart()
{
    return Paths::firmwareImage() + QLatin1String(".part");
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

bool removeIfThere(const QString &path)
{
    return ::unlink(QFile::encodeName(path).constData()) == 0 || errno == ENOENT;
}

/// Where no tool writes, the image stands at its place: a complete new one, or else the earlier one.
void settleEarlier()
{
    const int renamed = ::renameat2(AT_FDCWD, QFile::encodeName(imageAside()).constData(), AT_FDCWD,
                                    QFile::encodeName(Paths::firmwareImage()).constData(), RENAME_NOREPLACE);
    if (renamed != 0 && errno == EEXIST)
        removeIfThere(imageAside());
}

/// Keeps the earlier image under a second name while the new one takes its place.
void keepAside()
{
    removeIfThere(imageAside());
    if (::link(QFile::encodeName(Paths::firmwareImage()).constData(),
               QFile::encodeName(imageAside()).constData())
            != 0
        && errno != ENOENT)
        qCWarning(lcImage) << "cannot keep the earlier image aside:" << std::strerror(errno);
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
    keepAside();
    if (!file.flush() || ::fsync(file.handle()) != 0 || !rename(name, image)) {
        qCCritical(lcImage).noquote() << "cannot put" << image << "in place:" << std::strerror(errno);
        removeIfThere(imageAside());
        return false;
    }
    file.setAutoRemove(false);
    if (!DurableFile::synchronise(Paths::updates())) {
        qCCritical(lcImage).noquote() << "cannot keep" << image << ':' << std::strerror(errno);
        removeIfThere(image);
        settleEarlier();
        return false;
    }
    removeIfThere(imageAside());
    qCInfo(lcImage).noquote() << image << "is in place," << file.size() << "bytes";
    return true;
}

bool prepareForTool()
{
    QDir().mkpath(Paths::updates());
    const QString image = Paths::firmwareImage();
    const bool isAside = rename(image, imageAside()) || errno == ENOENT;
    // From now on an image is the tool's.
    if (isAside && DurableFile::write(unfinishedMark(), QByteArray()).isEmpty())
        return true;
    qCCritical(lcImage).noquote() << "cannot prepare" << Paths::updates() << "for the tool";
    rename(imageAside(), image);
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
    bool isWhole = succeeded && QFileInfo(image).isFile() && QFileInfo(image).size() > 0
        && DurableFile::synchronise(image);
    QFile::remove(toolsPart());
    // While the mark is there, the next start removes the image.
    if ((!isWhole && !removeIfThere(image)) || !removeIfThere(unfinishedMark())) {
        qCCritical(lcImage).noquote() << "cannot settle" << image << "yet:" << std::strerror(errno);
        return false;
    }
    if (!DurableFile::synchronise(Paths::updates()) && isWhole) {
        qCCritical(lcImage).noquote() << "cannot keep" << image << ':' << std::strerror(errno);
        isWhole = false;
        removeIfThere(image);
    }
    settleEarlier();
    return isWhole;
}

void removeStale()
{
    // Where nobody can tell now, the next start can.
    if (QFile::exists(unfinishedMark()))
        finishTool(false);
    else if (DurableFile::isMissing(unfinishedMark()))
        settleEarlier();
    QFile::remove(toolsPart());
    DurableFile::sweep(Paths::firmwareImage());
    DurableFile::sweep(unfinishedMark());
}

} // namespace FirmwareImage
