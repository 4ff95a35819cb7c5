// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QVariantMap>

/// Lays a document from afar over the device's own. No key comes and none goes: a key that the local document
/// lacks is passed over, and so is a value of another type. Objects are merged key by key; everything else,
/// arrays too, is replaced whole.
namespace Merge {

void mergeJsonObject(QJsonObject &local, const QJsonObject &remote);
/// Calls itself for each object in both maps: as deep as the flatter of the two.
void mergeJsonVariant(QVariantMap &local, const QVariantMap &remote);

} // namespace Merge
