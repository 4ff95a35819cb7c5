// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// Files in a folder that others may write to, such as /tmp.
namespace SharedFile {

/// Puts a file of mode 0644 with this content in the place of `fileName`, in one step. It never writes
/// through a link or into a file that another user has put there. With `owner` the file belongs to that user
/// and group, who may then remove it from a sticky folder.
bool replace(const QString &fileName, const QByteArray &content, uid_t owner = uid_t(-1),
             gid_t group = gid_t(-1));
/// Removes the file, or the link, of this name. True when there is none any more.
bool remove(const QString &fileName);

} // namespace SharedFile
