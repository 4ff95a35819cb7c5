// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QJsonValue>

/// Upgrades the root object of an older document to the current version. Unless noted otherwise, a value of
/// the wrong type counts as the empty value of the right type.
namespace Upgrades {

/// The oldest version, and the version of documents that state none.
constexpr int oldestVersion = 14;

/// Whether a value exists and is not null.
bool isPresent(const QJsonValue &value);

/// The version that the document states; `oldestVersion` without "firmware info", 0 if that has no version.
int statedVersion(const QJsonObject &root);
/// The version of the device's own document, at least `oldestVersion`.
int effectiveVersion(const QJsonObject &root);

/// Whether "network settings" have the old form with "ethernet" and "wifi".
bool hasOldNetwork(const QJsonObject &root);
/// Adds "interfaces" and "DNS" to an old network section, made from "ethernet" and "wifi", which stay.
void toNewNetwork(QJsonObject &root);

/// Upgrades a complete document from version 14 to 15.
void toVersion15(QJsonObject &root);
/// Upgrades a remote, possibly partial document. Only its own values are converted, so that a merge changes
/// nothing else.
void partialToVersion15(QJsonObject &root);

} // namespace Upgrades
