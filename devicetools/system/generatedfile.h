// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Files in /etc that are made from the machine's data, and that an administrator may edit: an edited one is
/// kept.
namespace GeneratedFile {

enum class Outcome { Written, Unchanged, Kept, Failed };

/// Puts `content` into the file, below a line that holds its digest. A file whose content and digest differ,
/// or which has no digest, was edited.
Outcome update(const QString &path, const QByteArray &content);

/// make-lists [FOLDER]: the lists of keyboard layouts and time zones, in /etc unless told otherwise. Returns
/// a Tool::Status.
int makeLists(const QStringList &arguments);

} // namespace GeneratedFile
