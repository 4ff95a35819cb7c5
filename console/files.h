// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/expected.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// Reads and writes files on the console's own machine.
namespace Files {

/// Reads a whole file; "-" is standard input.
Expected<QByteArray> read(const QString &name);
/// Reads the JSON object of a file; "-" is standard input.
Expected<QJsonObject> readObject(const QString &name);
/// Returns the password of an update: the first line of the file, or the value of KT_CONSOLE_PASSWORD when no
/// file is named.
Expected<QString> readPassword(const QString &fileName);
/// Writes a file that only its owner can read. Returns an error text, which is empty on success.
QString writePrivate(const QString &name, const QByteArray &content);

} // namespace Files
