// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaprotocol.h"

#include <algorithm>

namespace SolvaProtocol {

namespace {

const QLatin1String schemeEnd("://");

/// The name in "name:NAME|..."; empty for other lines.
QString desktopName(const QByteArray &line)
{
    if (!line.startsWith("name"))
        return QString();
    return QString::fromUtf8(line.split('|').constFirst().split(':').value(1));
}

} // namespace

QString completedAddress(const QString &given)
{
    QString address = given;
    while (address.endsWith(QLatin1Char('/')))
        address.chop(1);
    if (address.contains(schemeEnd))
        return address;
    const QString withScheme = QStringLiteral("https://") + address;
    return address.contains(QLatin1Char(':')) ? withScheme
                                              : withScheme + QLatin1Char(':') + QString::number(defaultPort);
}

QString userWithDomain(const QString &user, const QString &domain)
{
    return domain.isEmpty() || user.contains(QLatin1Char('@')) ? user : user + QLatin1Char('@') + domain;
}

QUrl requestUrl(const QString &address, const QString &user, const QString &password)
{
    QUrl url(completedAddress(address) + requestPath);
    url.setUserName(user, QUrl::DecodedMode);
    url.setPassword(password, QUrl::DecodedMode);
    return url;
}

QString host(const QString &address)
{
    const QUrl url(completedAddress(address));
    return url
        .toString(QUrl::RemoveScheme | QUrl::RemovePort | QUrl::RemoveQuery | QUrl::RemoveFilename
                  | QUrl::RemoveUserInfo | QUrl::RemoveFragment)
        .remove(QLatin1Char('/'));
}

Credentials basicCredentials(const QString &user, const QString &password)
{
    const QString pair = user + password;
    if (std::all_of(pair.begin(), pair.end(), [](QChar c) { return c.unicode() < 0x100; }))
        return {user, password};
    return {QString::fromLatin1(user.toUtf8()), QString::fromLatin1(password.toUtf8())};
}

QStringList desktopNames(const QByteArray &body)
{
    QStringList names;
    int start = 0;
    while (start < body.size() && names.size() < desktopLimit) {
        int end = body.indexOf('\n', start);
        if (end < 0)
            end = body.size();
        QByteArray line = body.mid(start, end - start);
        if (line.endsWith('\r'))
            line.chop(1);
        const QString name = desktopName(line);
        if (!name.isEmpty() && name.size() <= nameLimit)
            names.append(name);
        start = end + 1;
    }
    return names;
}

QStringList connectionArguments(const Session &session)
{
    QStringList arguments{QStringLiteral("-c")};
    const auto add = [&arguments](const char *option, const QString &value) {
        arguments.append(QLatin1String(option) + QLatin1Char('=') + value);
    };
    add("--server", host(session.address));
    add("--protocol", session.protocol);
    add("--desktop", session.desktop);
    add("--username", session.user);
    add("--password", session.password);
    add("--experience", session.experience);
    add("--keyboard-layout", session.keyboardLayout);
    if (!session.application.isEmpty()) {
        add("--application", session.application);
        if (!session.applicationDir.isEmpty())
            add("--application-dir", session.applicationDir);
    }
    if (session.dualDisplay) {
        arguments.append(QStringLiteral("--use-smsc-sda"));
        add("--sda-position", session.dualDisplayPosition);
    }
    return arguments;
}

} // namespace SolvaProtocol
