// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// Files that survive a power failure.
namespace DurableFile {

/// Writes a complete file or none. Returns an empty text when the file is on the disk under its name, or the
/// system's error. A new file has `mode` from the start; a replaced file keeps its own.
QString write(const QString &path, const QByteArray &content, mode_t mode = 0644);

/// Does the same without synchronising the folder: the caller does that once after several files.
QString writeContent(const QString &path, const QByteArray &content, mode_t mode);

/// Writes a file's content, or the names in a folder, to the disk. False, with `errno` set, if that fails.
bool synchronise(const QString &path);

} // namespace DurableFile
