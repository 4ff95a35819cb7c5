// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/qmdspool.h"

#include <QDir>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

QByteArray content(const QString &file)
{
    QFile open(file);
    return open.open(QIODevice::ReadOnly) ? open.readAll() : QByteArray();
}

bool write(const QString &file, const QByteArray &text)
{
    QSaveFile open(file);
    return open.open(QIODevice::WriteOnly) && open.write(text) == text.size() && open.commit();
}

} // namespace

const QStringList &QmdSpool::kinds()
{
    static const QStringList words{QStringLiteral("actions"), QStringLiteral("configuration"),
                                   QStringLiteral("profile"), QStringLiteral("body")};
    return words;
}

QmdSpool::QmdSpool(const QString &folder)
    : m_folder(folder)
{
    QDir().mkpath(folder);
}

/// Uses only letters and digits of the serial number, because the client chooses it.
QString QmdSpool::folderOf(const QString &serial) const
{
    QString name = serial.left(64);
    name.remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")));
    return m_folder + QLatin1Char('/') + (name.isEmpty() ? QStringLiteral("-") : name);
}

bool QmdSpool::add(const QString &serial, const QString &kind, const QByteArray &text) const
{
    const QDir folder(folderOf(serial) + QLatin1Char('/') + kind);
    folder.mkpath(QStringLiteral("."));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    const int number = names.isEmpty() ? 1 : names.constLast().toInt() + 1;
    return write(folder.filePath(QStringLiteral("%1").arg(number, 6, 10, QLatin1Char('0'))), text);
}

QString QmdSpool::waiting(const QString &serial, const QString &kind) const
{
    const QDir folder(folderOf(serial) + QLatin1Char('/') + kind);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    return names.isEmpty() ? QString() : folder.filePath(names.constFirst());
}

QByteArray QmdSpool::take(const QString &serial, const QString &kind) const
{
    const QString file = waiting(serial, kind);
    if (file.isEmpty())
        return QByteArray();
    const QByteArray text = content(file);
    QFile::remove(file);
    return text.isNull() ? QByteArray("") : text;
}

QJsonArray QmdSpool::takeActions(const QString &serial) const
{
    QJsonArray all;
    for (QByteArray text = take(serial, QStringLiteral("actions")); !text.isNull();
         text = take(serial, QStringLiteral("actions"))) {
        const QJsonArray list = QJsonDocument::fromJson(text).array();
        for (const QJsonValue &action : list)
            all.append(action);
    }
    return all;
}

void QmdSpool::record(const QString &serial, const QByteArray &line) const
{
    QDir().mkpath(folderOf(serial));
    QFile log(folderOf(serial) + QLatin1String("/log"));
    if (log.open(QIODevice::Append))
        log.write(line + '\n');
}

QString QmdSpool::mode() const
{
    return QString::fromUtf8(content(m_folder + QLatin1String("/mode")).trimmed());
}

bool QmdSpool::setMode(const QString &word) const
{
    return write(m_folder + QLatin1String("/mode"), word.toUtf8() + '\n');
}
