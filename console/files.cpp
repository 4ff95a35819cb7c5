// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/files.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace Files {

Expected<QByteArray> read(const QString &name)
{
    QFile file(name);
    const bool standardInput = name == QLatin1String("-");
    if (standardInput ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly)) {
        QByteArray content = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return content;
    }
    return Error{QStringLiteral("cannot read %1: %2").arg(name, file.errorString())};
}

Expected<QJsonObject> readObject(const QString &name)
{
    const auto content = read(name);
    if (!content)
        return Error{content.error()};
    QJsonParseError fault{};
    const QJsonDocument document = QJsonDocument::fromJson(*content, &fault);
    if (document.isObject())
        return document.object();
    return Error{document.isNull()
                     ? QStringLiteral("%1: %2 at byte %3").arg(name, fault.errorString()).arg(fault.offset)
                     : QStringLiteral("not a JSON object: %1").arg(name)};
}

Expected<QString> readPassword(const QString &fileName)
{
    if (fileName.isEmpty())
        return qEnvironmentVariable("KT_CONSOLE_PASSWORD");
    const auto content = read(fileName);
    if (!content)
        return Error{content.error()};
    QByteArray line = content->split('\n').first();
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

QString writePrivate(const QString &name, const QByteArray &content)
{
    QSaveFile file(name);
    if (file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        && file.write(content) == content.size() && file.commit())
        return QString();
    return QStringLiteral("cannot write %1: %2").arg(name, file.errorString());
}

} // namespace Files
