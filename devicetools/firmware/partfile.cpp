// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-firmware/partfile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

/// The launcher ends a tool that is silent for three seconds, so the disk is never far behind: memory cards
/// are slow.
constexpr qint64 syncInterval = 4LL * 1024 * 1024;

} // namespace

PartFile::PartFile(const QString &target)
    : m_target(QFile::encodeName(target))
    , m_part(m_target + ".part")
{ }

PartFile::~PartFile()
{
    if (m_descriptor < 0)
        return;
    if (!m_isFinished)
        unlink(m_part.constData());
    close(m_descriptor);
}

bool PartFile::open()
{
    const int descriptor = ::open(m_part.constData(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return fail("cannot write");
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 || ftruncate(descriptor, 0) != 0) {
        fail("cannot write");
        close(descriptor); // and leave it to the process that has it
        return false;
    }
    m_descriptor = descriptor;
    return true;
}

bool PartFile::append(const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(m_descriptor, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return fail("cannot write");
        bytes += written;
        size -= static_cast<std::size_t>(written);
        m_size += written;
    }
    if (m_size - m_syncedSize < syncInterval)
        return true;
    m_syncedSize = m_size;
    return fdatasync(m_descriptor) == 0 || fail("cannot write");
}

bool PartFile::finish()
{
    if (m_size == 0) {
        m_problem = QStringLiteral("the file is empty");
        return false;
    }
    if (fsync(m_descriptor) != 0 || std::rename(m_part.constData(), m_target.constData()) != 0)
        return fail("cannot store");
    m_isFinished = true;
    const QByteArray folder = m_target.left(m_target.lastIndexOf('/') + 1);
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool done = descriptor >= 0 && fsync(descriptor) == 0;
    if (descriptor >= 0)
        close(descriptor);
    return done || fail("cannot store");
}

qint64 PartFile::room() const
{
    struct statvfs disk = {};
    if (fstatvfs(m_descriptor, &disk) != 0)
        return 0;
    return static_cast<qint64>(disk.f_bavail) * static_cast<qint64>(disk.f_frsize)
        + QFileInfo(QFile::decodeName(m_target + ".earlier")).size();
}

QString PartFile::problem() const
{
    return m_problem;
}

bool PartFile::fail(const char *step)
{
    m_problem = QStringLiteral("%1 %2: %3")
                    .arg(QLatin1String(step), QFile::decodeName(m_part), qt_error_string(errno));
    return false;
}
