// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The lists that the device keeps as text files, a line an entry: keyboard layouts and time zones.
namespace ListFile {

/// The entries of a file, each split into its fields at ": " and trimmed. Blank lines and lines that begin
/// with "#" are left out. A missing file is an empty list, with a line in the log; a file beyond a megabyte
/// is cut.
QVector<QStringList> read(const QString &path);

} // namespace ListFile
