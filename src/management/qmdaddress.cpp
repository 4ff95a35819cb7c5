// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/qmdaddress.h"

#include "config/keys.h"
#include "device/paths.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QRegularExpression>
#include <QSettings>
#include <QUrl>

namespace QmdAddress {

namespace {

const QString schemeMark = QStringLiteral("://");

QString offeredByDhcp()
{
    const QString file = Paths::dhcpOptions();
    if (!QFileInfo::exists(file))
        return QString();
    return QSettings(file, QSettings::IniFormat).value(QStringLiteral("QMD/qmd_address")).toString();
}

/// The end of the host and its optional port.
int authorityEnd(const QString &url)
{
    const int slash = url.indexOf(QLatin1Char('/'), url.indexOf(schemeMark) + schemeMark.size());
    return slash < 0 ? url.size() : slash;
}

bool hasPort(const QString &authority)
{
    // The colons of an IPv6 address are before its closing bracket.
    static const QRegularExpression port(QStringLiteral(":[0-9]+$"));
    return port.match(authority.mid(authority.lastIndexOf(QLatin1Char(']')) + 1)).hasMatch();
}

} // namespace

QString complete(const QString &address)
{
    if (address.isEmpty())
        return QStringLiteral("Unknown");
    QString result = address.contains(schemeMark) ? address : QStringLiteral("http://") + address;
    const int begin = result.indexOf(schemeMark) + schemeMark.size();
    const int length = authorityEnd(result) - begin;
    QString authority = result.mid(begin, length);
    if (QHostAddress(authority).protocol() == QAbstractSocket::IPv6Protocol)
        authority = QLatin1Char('[') + authority + QLatin1Char(']');
    else if (authority.endsWith(QLatin1Char(':')))
        authority.chop(1);
    if (!hasPort(authority))
        authority += QStringLiteral(":8080");
    return result.replace(begin, length, authority);
}

bool isUsable(const QString &address)
{
    const QUrl url(complete(address), QUrl::StrictMode);
    const bool isHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return isHttp && url.isValid() && !url.host().isEmpty() && url.port() > 0;
}

QString url(const QJsonObject &managementSettings)
{
    const bool byDhcp = managementSettings.value(Key::autodiscoverQmd).toBool();
    return complete(byDhcp ? offeredByDhcp() : managementSettings.value(Key::qmdAddress).toString());
}

} // namespace QmdAddress
