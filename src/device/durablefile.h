// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// Files that survive a power failure.
namespace DurableFile {

/// Writes a complete file or none. Returns an empty text when the file is on the disk under its name, or the
/// system's error. A new file has `mode` from the start; a replaced file keeps its own. With an error, a file
/// that was to be replaced is there with its old content or the new one, whole.
QString write(const QString &path, const QByteArray &content, mode_t mode = 0644);

/// Does the same without synchronising the folder: the caller does that once after several files.
QString writeContent(const QString &path, const QByteArray &content, mode_t mode);

/// Whether there is surely no such file: one that the system cannot look at now may be there.
bool isMissing(const QString &path);

/// Removes what writing this file left where the program ended meanwhile.
void sweep(const QString &path);

/// Writes a file's content, or the names in a folder, to the disk. False, with `errno` set, if that fails.
bool synchronise(const QString &path);

} // namespace DurableFile
