// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QLatin1String>
#include <QVariantMap>

/// Checks whether two documents have the same structure: the same keys with values of the same types. The
/// elements of arrays and the contents of "audio settings" are not compared.
namespace Compatibility {

/// The name of a value's type. All numbers count as doubles, although Qt has a type of its own for whole
/// numbers.
QLatin1String typeName(const QVariant &value);

/// Sets `ok` to false if the maps differ, and never to true. Calls itself for each object in both maps. Qt's
/// parser limits the nesting, and so the recursion, to 1024.
void checkJsonVariant(const QVariantMap &local, const QVariantMap &remote, bool &ok);

bool checkObjects(const QJsonObject &local, const QJsonObject &remote);

} // namespace Compatibility
