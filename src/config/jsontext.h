// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>

/// Reads JSON text from untrusted sources.
namespace JsonText {

/// The text with blanks in the place of each member that a later one of the same object and key replaces. The
/// framework's parser would leak it, so that a peer could use up the device's memory.
QByteArray withLastMembers(QByteArray text);

/// The object in UTF-8 text, or else in Latin-1 text. Empty if the text is not an object. Of members with one
/// key the last counts.
QJsonObject parsed(const QByteArray &text);

} // namespace JsonText
