// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>

/// Reads JSON text from untrusted sources.
namespace JsonText {

/// Whether an object in the text repeats a key. The framework's parser accepts such text but leaks the
/// replaced member, so a peer could use up the device's memory.
bool repeatsKey(const QByteArray &text);

/// The object in UTF-8 text, or else in Latin-1 text. Empty if the text is not an object or repeats a key.
QJsonObject parsed(const QByteArray &text);

} // namespace JsonText
