// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QVariantMap>

/// Merges a remote document into the device's own. No keys are added or removed: unknown keys and values of
/// another type are ignored. Objects are merged key by key; all other values, including arrays, are replaced
/// as a whole.
namespace Merge {

void mergeJsonObject(QJsonObject &local, const QJsonObject &remote);
/// Calls itself for each object in both maps, so the flatter document limits the recursion.
void mergeJsonVariant(QVariantMap &local, const QVariantMap &remote);

} // namespace Merge
