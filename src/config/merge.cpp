// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/merge.h"

#include "config/compatibility.h"

namespace Merge {

void mergeJsonObject(QJsonObject &local, const QJsonObject &remote)
{
    QVariantMap merged = local.toVariantMap();
    mergeJsonVariant(merged, remote.toVariantMap());
    local = QJsonObject::fromVariantMap(merged);
}

void mergeJsonVariant(QVariantMap &local, const QVariantMap &remote)
{
    for (auto entry = remote.begin(); entry != remote.end(); ++entry) {
        const auto own = local.find(entry.key());
        if (own == local.end() || Compatibility::typeName(*own) != Compatibility::typeName(*entry))
            continue;
        if (entry->userType() == QMetaType::QVariantMap) {
            QVariantMap inner = own->toMap();
            mergeJsonVariant(inner, entry->toMap());
            *own = inner;
        } else {
            *own = *entry;
        }
    }
}

} // namespace Merge
