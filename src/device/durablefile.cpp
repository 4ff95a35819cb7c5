// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/durablefile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace DurableFile {

namespace {

bool open(QSaveFile &file, mode_t mode)
{
    // Set while the file is created: a user who can open it even for a moment can read it later.
    const mode_t before = ::umask(~mode & 0777);
    const bool opened = file.open(QIODevice::WriteOnly);
    ::umask(before);
    return opened;
}

/// QSaveFile ignores errors of fsync, so this calls it first.
QString save(QSaveFile &file, const QByteArray &content)
{
    // A disk that becomes full accepts a part without an error and refuses the rest.
    qint64 written = 0;
    while (written < content.size()) {
        const qint64 count = file.write(content.constData() + written, content.size() - written);
        if (count <= 0)
            return file.errorString();
        written += count;
    }
    if (!file.flush())
        return file.errorString();
    if (::fsync(file.handle()) != 0)
        return qt_error_string(errno);
    return file.commit() ? QString() : file.errorString();
}

} // namespace

QString writeContent(const QString &path, const QByteArray &content, mode_t mode)
{
    if (QFileInfo(path).isSymLink())
        QFile::remove(path); // QSaveFile would replace the target of the link
    QSaveFile file(path);
    if (!open(file, mode))
        return file.errorString();
    return save(file, content);
}

QString write(const QString &path, const QByteArray &content, mode_t mode)
{
    const bool isNew = isMissing(path);
    QString error = writeContent(path, content, mode);
    if (error.isEmpty() && !synchronise(QFileInfo(path).path())) {
        error = qt_error_string(errno);
        if (isNew)
            QFile::remove(path);
    }
    return error;
}

bool isMissing(const QString &path)
{
    return ::access(QFile::encodeName(path).constData(), F_OK) != 0 && errno == ENOENT;
}

void sweep(const QString &path)
{
    const QFileInfo file(path);
    QDir folder(file.path());
    const QString sixCharacters = QStringLiteral(".??????"); // the ending of a temporary file
    for (const QString &name :
         folder.entryList({file.fileName() + sixCharacters}, QDir::Files | QDir::Hidden))
        folder.remove(name);
}

bool synchronise(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return done;
}

} // namespace DurableFile
