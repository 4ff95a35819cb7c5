// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/stagedfiles.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcFiles, "kt.certificates.files")

namespace {

const QString hiddenPrefix = QStringLiteral(".import-");

bool writeAll(int descriptor, const QByteArray &content)
{
    qint64 written = 0;
    while (written < content.size()) {
        const ssize_t count = ::write(descriptor, content.constData() + written,
                                      static_cast<size_t>(content.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return ::fsync(descriptor) == 0;
}

bool writeFile(const QString &path, const QByteArray &content, mode_t mode)
{
    // With the final mode from the first byte on: a key is never readable by others, not even for a moment.
    const int descriptor
        = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0)
        return false;
    const bool written = ::fchmod(descriptor, mode) == 0 && writeAll(descriptor, content);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return written;
}

bool failed(const QString &path)
{
    qCCritical(lcFiles).noquote() << "cannot write" << path << ':' << std::strerror(errno);
    return false;
}

} // namespace

StagedFiles::~StagedFiles()
{
    for (const File &file : qAsConst(m_files))
        QFile::remove(file.folder + (file.published ? file.name : file.hidden));
}

bool StagedFiles::add(const QString &folder, const QString &name, const QByteArray &content, mode_t mode)
{
    QDir().mkpath(folder);
    m_files += {folder, hiddenPrefix + name, name, false};
    const QString path = folder + m_files.last().hidden;
    return writeFile(path, content, mode) || failed(path);
}

bool StagedFiles::publish()
{
    for (File &file : m_files) {
        const QString path = file.folder + file.name;
        if (::rename(QFile::encodeName(file.folder + file.hidden).constData(),
                     QFile::encodeName(path).constData())
            != 0)
            return failed(path);
        file.published = true;
    }
    QSet<QString> folders;
    for (const File &file : qAsConst(m_files))
        folders += file.folder;
    return std::all_of(folders.begin(), folders.end(),
                       [](const QString &folder) { return syncFolder(folder); });
}

void StagedFiles::keep()
{
    m_files.clear();
}

void StagedFiles::sweep(const QString &folder)
{
    QDir directory(folder);
    const QStringList left
        = directory.entryList({hiddenPrefix + QLatin1Char('*')}, QDir::Files | QDir::Hidden);
    for (const QString &name : left)
        directory.remove(name);
}

bool StagedFiles::syncFolder(const QString &folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (!synced)
        failed(folder);
    if (descriptor >= 0)
        ::close(descriptor);
    return synced;
}
