// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>

/// JSON text that a stranger may have written.
namespace JsonText {

/// Whether an object in it names a key twice. The framework's parser takes such text and never frees the
/// member that it replaces: who may send it as often as he likes could use up the device's memory.
bool repeatsKey(const QByteArray &text);

/// The object in UTF-8 or else Latin-1 text. Empty when it is none, or repeats a key.
QJsonObject parsed(const QByteArray &text);

} // namespace JsonText
