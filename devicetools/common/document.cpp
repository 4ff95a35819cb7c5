// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/document.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

namespace Document {

std::optional<QJsonObject> read(const QString &fileName)
{
    QFile file(fileName);
    // A pipe or a device in its place would keep us waiting.
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > sizeLimit)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(file.read(sizeLimit));
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

QString text(const QJsonObject &object, const char *name, int longest)
{
    const QString value = object.value(QLatin1String(name)).toString();
    return value.size() <= longest ? value : QString();
}

} // namespace Document
