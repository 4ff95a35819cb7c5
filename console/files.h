// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// What the console reads and writes on its own machine. `error` says what failed.
namespace Files {

/// A whole file; "-" is standard input.
std::optional<QByteArray> read(const QString &name, QString *error);
/// The JSON object in a file; "-" is standard input.
std::optional<QJsonObject> readObject(const QString &name, QString *error);
/// The password of an update: a file's first line, else the environment's KT_CONSOLE_PASSWORD, else empty.
std::optional<QString> readPassword(const QString &fileName, QString *error);
/// Puts a file with secrets in place, readable by its owner alone.
bool writePrivate(const QString &name, const QByteArray &content, QString *error);

} // namespace Files
