// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QJsonValue>

/// What turns the root object of an older document into one of the present version. A value of the wrong type
/// counts as the empty value of the right one, unless said otherwise.
namespace Upgrades {

/// The version of documents that say none, and the oldest there is.
constexpr int oldestVersion = 14;

/// A value that is absent, or null, is not present.
bool isPresent(const QJsonValue &value);

/// The version that the document states: `oldestVersion` without "firmware info", and 0 when that names none.
int statedVersion(const QJsonObject &root);
/// The version that the device's own document is treated as: at least `oldestVersion`.
int effectiveVersion(const QJsonObject &root);

/// Whether "network settings" are of the form with "ethernet" and "wifi".
bool hasOldNetwork(const QJsonObject &root);
/// Makes "interfaces" and "DNS" of an old network section; "ethernet" and "wifi" stay beside them.
void toNewNetwork(QJsonObject &root);

/// Makes a whole document of version 14 one of version 15.
void toVersion15(QJsonObject &root);
/// The same for a document, possibly partial, that came from afar: only what it says is carried over, so that
/// a merge changes nothing else.
void partialToVersion15(QJsonObject &root);

} // namespace Upgrades
