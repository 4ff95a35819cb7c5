// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/updaterequest.h"

#include "update/consoleformat.h"

#include <QUrl>

namespace UpdateRequest {

namespace {

const QString serverScheme = QStringLiteral("CORVID://");

Expected<QByteArray> built(const ConsoleFormat::UpdateSource &source)
{
    const auto request = ConsoleFormat::updateRequest(source);
    if (request)
        return *request;
    return Error{QStringLiteral("the device takes %1 ASCII characters in each of address, user, password and "
                                "file, and %2 in a URL")
                     .arg(ConsoleFormat::longestField)
                     .arg(2 * ConsoleFormat::longestField)};
}

} // namespace

Expected<QByteArray> fromUrl(const QString &url, const QString &user, const QString &password)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QStringList schemes = {QStringLiteral("ftp"), QStringLiteral("http"), QStringLiteral("https")};
    if (!parsed.isValid() || parsed.host().isEmpty() || !schemes.contains(parsed.scheme()))
        return Error{QStringLiteral("not an ftp:// or http:// URL: %1").arg(parsed.toDisplayString())};
    return built(
        {url.left(ConsoleFormat::longestField), user, password, url.mid(ConsoleFormat::longestField)});
}

Expected<QByteArray> fromServer(const QString &server, const QString &file)
{
    return built({serverScheme + server, QString(), QString(), file});
}

} // namespace UpdateRequest
