// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/updaterequest.h"

#include "update/consoleformat.h"

#include <QUrl>

namespace UpdateRequest {

namespace {

const QString serverScheme = QStringLiteral("CORVID://");

std::optional<QByteArray> built(const ConsoleFormat::UpdateSource &source, QString *error)
{
    auto request = ConsoleFormat::updateRequest(source);
    if (!request)
        *error = QStringLiteral("the device takes %1 ASCII characters in each of address, user, password and "
                                "file, and %2 in a URL")
                     .arg(ConsoleFormat::longestField)
                     .arg(2 * ConsoleFormat::longestField);
    return request;
}

} // namespace

std::optional<QByteArray> fromUrl(const QString &url, const QString &user, const QString &password,
                                  QString *error)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QStringList schemes = {QStringLiteral("ftp"), QStringLiteral("http"), QStringLiteral("https")};
    if (!parsed.isValid() || parsed.host().isEmpty() || !schemes.contains(parsed.scheme())) {
        *error = QStringLiteral("%1 is no ftp:// or http:// URL").arg(parsed.toDisplayString());
        return std::nullopt;
    }
    return built(
        {url.left(ConsoleFormat::longestField), user, password, url.mid(ConsoleFormat::longestField)}, error);
}

std::optional<QByteArray> fromServer(const QString &server, const QString &file, QString *error)
{
    return built({serverScheme + server, QString(), QString(), file}, error);
}

} // namespace UpdateRequest
