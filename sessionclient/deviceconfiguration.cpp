// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/deviceconfiguration.h"

#include <QFile>
#include <QJsonDocument>

namespace {

constexpr qint64 largestDocument = 8 * 1024 * 1024;

} // namespace

QJsonObject deviceConfiguration()
{
    QFile file(qEnvironmentVariable("KT_DEVICE_ROOT") + QStringLiteral("/var/lib/kt964/config.json"));
    if (!file.open(QIODevice::ReadOnly))
        return QJsonObject();
    return QJsonDocument::fromJson(file.read(largestDocument)).object();
}
