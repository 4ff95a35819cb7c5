// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// Which settings are secret, and how they are kept out of what leaves the device.
namespace Secrets {

/// A key is secret by its name, wherever it stands: passwords and their hashes, pass phrases.
bool isSecret(const QString &key);

/// The document without its secrets. Every key stays, with a value of the type it had: a secret's text
/// becomes empty, its number 0, its object or array empty; switches, such as "password enabled", stay as they
/// are. Passwords inside URLs go too.
QJsonObject blanked(const QJsonObject &document);

/// The secrets themselves, for `redacted`.
QStringList valuesIn(const QJsonObject &document);

/// A text without these values, be they written plainly, quoted or percent-encoded, and without the passwords
/// of URLs. Values of few characters go only where they stand as words.
QString redacted(const QString &text, const QStringList &values);

} // namespace Secrets
