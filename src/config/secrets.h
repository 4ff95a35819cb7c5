// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// Defines the secret settings and removes them from data that leaves the device.
namespace Secrets {

/// Whether a key's value is secret, judged by the key's name: passwords and their hashes, pass phrases.
bool isSecret(const QString &key);

/// The document without its secrets. All keys and the types of their values stay: a secret text, object or
/// array becomes empty, a number 0. Switches such as "password enabled" keep their values. Passwords inside
/// URLs are removed.
QJsonObject blanked(const QJsonObject &document);

/// The document's secrets, for `redacted`.
QStringList valuesIn(const QJsonObject &document);

/// A text without these values (plain, quoted or percent-encoded) and without passwords of URLs. Very short
/// values are removed only where they are whole words.
QString redacted(const QString &text, const QStringList &values);

} // namespace Secrets
