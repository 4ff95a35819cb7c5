// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/sharedfile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace SharedFile {

namespace {

bool writeAll(int descriptor, const QByteArray &content)
{
    for (int written = 0; written < content.size();) {
        const ssize_t size = write(descriptor, content.constData() + written,
                                   static_cast<std::size_t>(content.size() - written));
        if (size < 0 && errno != EINTR)
            return false;
        written += size > 0 ? static_cast<int>(size) : 0;
    }
    return true;
}

bool isNobody(uid_t owner, gid_t group)
{
    return owner == uid_t(-1) && group == gid_t(-1);
}

} // namespace

bool replace(const QString &fileName, const QByteArray &content, uid_t owner, gid_t group)
{
    const QByteArray name = QFile::encodeName(fileName);
    QByteArray temporary = name + ".XXXXXX";
    const int descriptor = mkstemp(temporary.data()); // a new file, or none
    if (descriptor < 0)
        return false;
    bool done = writeAll(descriptor, content) && fchmod(descriptor, 0644) == 0
        && (isNobody(owner, group) || fchown(descriptor, owner, group) == 0);
    done = close(descriptor) == 0 && done;
    done = done && std::rename(temporary.constData(), name.constData()) == 0;
    if (!done)
        unlink(temporary.constData());
    return done;
}

bool remove(const QString &fileName)
{
    return unlink(QFile::encodeName(fileName).constData()) == 0 || errno == ENOENT;
}

} // namespace SharedFile
