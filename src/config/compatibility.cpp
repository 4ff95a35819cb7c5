// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/compatibility.h"

#include "config/keys.h"

namespace Compatibility {

QLatin1String typeName(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QLatin1String(QMetaType::typeName(QMetaType::Double));
    default:
        return QLatin1String(value.typeName());
    }
}

void checkJsonVariant(const QVariantMap &local, const QVariantMap &remote, bool &ok)
{
    if (local.size() != remote.size())
        ok = false;
    for (auto entry = remote.begin(); entry != remote.end(); ++entry) {
        const auto own = local.find(entry.key());
        if (own == local.end() || typeName(*own) != typeName(*entry))
            ok = false;
        else if (entry->userType() == QMetaType::QVariantMap && entry.key() != Key::audio)
            checkJsonVariant(own->toMap(), entry->toMap(), ok);
    }
}

bool checkObjects(const QJsonObject &local, const QJsonObject &remote)
{
    bool ok = true;
    checkJsonVariant(local.toVariantMap(), remote.toVariantMap(), ok);
    return ok;
}

} // namespace Compatibility
