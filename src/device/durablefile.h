// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

/// Files that survive a power failure.
namespace DurableFile {

/// Writes a file as a whole. When this returns an empty text, the file is on the disk under its name;
/// otherwise the text is the system's error, and nothing unfinished is left. A new file has `mode` from the
/// start; a file that is replaced keeps its own.
QString write(const QString &path, const QByteArray &content, mode_t mode = 0644);

/// Brings a file, or the names in a folder, to the disk; false with `errno` set when that fails.
bool synchronise(const QString &path);

} // namespace DurableFile
