// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/listfile.h"

#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcListFile, "kt.device.lists")

namespace ListFile {

namespace {

constexpr qint64 sizeLimit = 1024 * 1024;

QStringList fields(const QString &line)
{
    QStringList result;
    for (const QString &field : line.split(QStringLiteral(": ")))
        result += field.trimmed();
    return result;
}

} // namespace

QVector<QStringList> read(const QString &path)
{
    QVector<QStringList> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcListFile).noquote() << "cannot read" << path << ':' << file.errorString();
        return entries;
    }
    for (const QByteArray &line : file.read(sizeLimit).split('\n')) {
        const QString text = QString::fromUtf8(line).trimmed();
        if (!text.isEmpty() && !text.startsWith(QLatin1Char('#')))
            entries += fields(text);
    }
    return entries;
}

} // namespace ListFile
