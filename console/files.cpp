// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/files.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace Files {

std::optional<QByteArray> read(const QString &name, QString *error)
{
    QFile file(name);
    const bool standardInput = name == QLatin1String("-");
    if (standardInput ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly)) {
        QByteArray content = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return content;
    }
    *error = QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
    return std::nullopt;
}

std::optional<QJsonObject> readObject(const QString &name, QString *error)
{
    const auto content = read(name, error);
    if (!content)
        return std::nullopt;
    QJsonParseError fault{};
    const QJsonDocument document = QJsonDocument::fromJson(*content, &fault);
    if (document.isObject())
        return document.object();
    *error = document.isNull()
        ? QStringLiteral("%1: %2 at byte %3").arg(name, fault.errorString()).arg(fault.offset)
        : QStringLiteral("%1 holds no JSON object").arg(name);
    return std::nullopt;
}

std::optional<QString> readPassword(const QString &fileName, QString *error)
{
    if (fileName.isEmpty())
        return qEnvironmentVariable("KT_CONSOLE_PASSWORD");
    const auto content = read(fileName, error);
    if (!content)
        return std::nullopt;
    QByteArray line = content->split('\n').first();
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

bool writePrivate(const QString &name, const QByteArray &content, QString *error)
{
    QSaveFile file(name);
    if (file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        && file.write(content) == content.size() && file.commit())
        return true;
    *error = QStringLiteral("cannot write %1: %2").arg(name, file.errorString());
    return false;
}

} // namespace Files
