// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/usbidentifiers.h"

#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcUsbIdentifiers, "kt.device.usbids")

namespace UsbIdentifiers {

namespace {

constexpr qint64 longestLine = 1024;
constexpr int longestName = 200;

bool hasIdentifier(const QByteArray &entry, const QString &identifier)
{
    return QString::fromLatin1(entry.left(4)).compare(identifier, Qt::CaseInsensitive) == 0;
}

QString nameOf(const QByteArray &entry)
{
    return QString::fromUtf8(entry.mid(5, longestName));
}

} // namespace

QString name(const QString &path, const QString &vid, const QString &pid)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcUsbIdentifiers).noquote() << "cannot read" << path << ':' << file.errorString();
        return QString();
    }
    bool ofVendor = false;
    QString vendor;
    while (!file.atEnd() && file.pos() < sizeLimit) {
        const QByteArray line = file.readLine(longestLine);
        const QByteArray entry = line.simplified();
        if (!line.startsWith('\t')) {
            ofVendor = hasIdentifier(entry, vid);
            vendor = nameOf(entry);
        } else if (ofVendor && hasIdentifier(entry, pid)) {
            return QString(vendor + QLatin1Char(' ') + nameOf(entry)).trimmed();
        }
    }
    return QString();
}

} // namespace UsbIdentifiers
