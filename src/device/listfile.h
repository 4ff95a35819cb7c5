// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The device's lists in text files, one entry per line: keyboard layouts and time zones.
namespace ListFile {

/// The entries of a file, each split at ": " into trimmed fields. Blank lines and lines that start with "#"
/// are skipped. A missing file gives an empty list and a line in the log. Only the first megabyte is read.
QVector<QStringList> read(const QString &path);

} // namespace ListFile
