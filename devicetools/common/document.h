// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

/// The configuration document, as tools find it on disk.
namespace Document {

const QString path = QStringLiteral("/var/lib/kt964/config.json");
constexpr int sizeLimit = 16 * 1024 * 1024;

/// The root object of the file; nothing when it is not a regular file, too large, or no JSON object.
std::optional<QJsonObject> read(const QString &fileName = path);

/// The member `name` of `object` as a text of at most `longest` characters; empty when it is another type.
QString text(const QJsonObject &object, const char *name, int longest = 255);

} // namespace Document
