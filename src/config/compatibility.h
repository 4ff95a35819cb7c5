// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QLatin1String>
#include <QVariantMap>

/// Whether two documents have the same structure: the same keys with values of the same types. Arrays are
/// compared by type alone, and the contents of "audio settings" not at all.
namespace Compatibility {

/// The name of a value's type. All numbers bear that of a double: whether one is whole is no part of the
/// structure, although Qt gives whole ones a type of their own.
QLatin1String typeName(const QVariant &value);

/// Sets `ok` to false where the maps differ; never to true. Calls itself for each object in both maps: as
/// deep as the flatter of the two documents, and Qt's parser takes none that is nested deeper than 1024.
void checkJsonVariant(const QVariantMap &local, const QVariantMap &remote, bool &ok);

bool checkObjects(const QJsonObject &local, const QJsonObject &remote);

} // namespace Compatibility
