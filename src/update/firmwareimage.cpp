// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/firmwareimage.h"

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

QString toolMark()
{
    return Paths::firmwareImage() + QLatin1String(".unfinished");
}

/// What is synchronised is there after a power failure.
bool synchronise(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    ::close(descriptor);
    return done;
}

} // namespace

std::unique_ptr<QTemporaryFile> stage()
{
    QDir().mkpath(Paths::updates());
    auto file = std::make_unique<QTemporaryFile>(Paths::firmwareImage() + QLatin1String(".XXXXXX"));
    if (file->open())
        return file;
    qCCritical(lcImage).noquote() << "cannot write in" << Paths::updates() << ':' << file->errorString();
    return nullptr;
}

bool fits(qint64 bytes)
{
    const auto room = [] {
        return QStorageInfo(Paths::updates()).bytesAvailable();
    };
    if (room() < bytes)
        QFile::remove(Paths::firmwareImage());
    const qint64 left = room();
    if (left < bytes)
        qCCritical(lcImage) << bytes << "bytes have no room," << left << "are free";
    return left >= bytes;
}

bool place(QTemporaryFile &file)
{
    const QString image = Paths::firmwareImage();
    const QString name = file.fileName();
    if (!file.flush() || !synchronise(name)
        || std::rename(QFile::encodeName(name).constData(), QFile::encodeName(image).constData()) != 0) {
        qCCritical(lcImage).noquote() << "cannot put" << image << "in place:" << std::strerror(errno);
        return false;
    }
    file.setAutoRemove(false);
    synchronise(Paths::updates());
    qCInfo(lcImage).noquote() << image << "is in place," << file.size() << "bytes";
    return true;
}

bool openToTool()
{
    QDir().mkpath(Paths::updates());
    QFile mark(toolMark());
    if (!mark.open(QIODevice::WriteOnly) || !synchronise(mark.fileName()))
        return false;
    QFile::remove(Paths::firmwareImage());
    return !QFile::exists(Paths::firmwareImage());
}

bool closeToTool(bool succeeded)
{
    const QString image = Paths::firmwareImage();
    const bool whole = succeeded && QFileInfo(image).isFile() && QFileInfo(image).size() > 0;
    if (!whole)
        QFile::remove(image);
    else
        synchronise(image);
    QFile::remove(toolMark());
    return whole;
}

void removeStale()
{
    if (QFile::exists(toolMark()))
        closeToTool(false);
    QDir folder(Paths::updates());
    const QString pattern = QFileInfo(Paths::firmwareImage()).fileName() + QLatin1String(".??????");
    for (const QString &name : folder.entryList({pattern}, QDir::Files)) {
        qCInfo(lcImage).noquote() << "remove the unfinished" << name;
        folder.remove(name);
    }
}

} // namespace FirmwareImage
