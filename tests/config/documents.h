// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

/// The documents in tests/config/data.
namespace Documents {

inline QByteArray text(const QString &name)
{
    QFile file(qEnvironmentVariable("KT_SOURCE_DIR") + QLatin1String("/tests/config/data/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    return file.readAll();
}

inline QJsonObject object(const QString &name)
{
    return QJsonDocument::fromJson(text(name)).object();
}

/// Each object of a file's array is a data row: the column "row".
inline void addRows(const QString &name)
{
    QTest::addColumn<QJsonObject>("row");
    for (const QJsonValue &row : QJsonDocument::fromJson(text(name)).array())
        QTest::newRow(qPrintable(row[QLatin1String("name")].toString())) << row.toObject();
}

} // namespace Documents
