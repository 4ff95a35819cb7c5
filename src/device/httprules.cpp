// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/httprules.h"

namespace Http {

QByteArray verb(QNetworkAccessManager::Operation operation)
{
    switch (operation) {
    case QNetworkAccessManager::HeadOperation:
        return "HEAD";
    case QNetworkAccessManager::GetOperation:
        return "GET";
    case QNetworkAccessManager::PutOperation:
        return "PUT";
    case QNetworkAccessManager::PostOperation:
        return "POST";
    case QNetworkAccessManager::DeleteOperation:
        return "DELETE";
    default:
        return {};
    }
}

bool isEncrypted(const QUrl &url)
{
    return url.scheme() == QLatin1String("https");
}

bool isWeb(const QUrl &url)
{
    return (isEncrypted(url) || url.scheme() == QLatin1String("http")) && !url.host().isEmpty();
}

int portOf(const QUrl &url)
{
    return url.port(isEncrypted(url) ? 443 : 80);
}

bool isSameOrigin(const QUrl &one, const QUrl &other)
{
    return one.scheme() == other.scheme() && one.host() == other.host() && portOf(one) == portOf(other);
}

/// Each character is sent as one byte.
QByteArray basic(const QString &user, const QString &password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toLatin1().toBase64();
}

bool isBasicOffered(const HttpHead &head)
{
    for (const auto &header : head.headers) {
        if (header.first.toLower() == "www-authenticate" && header.second.toLower().contains("basic"))
            return true;
    }
    return false;
}

QNetworkReply::NetworkError errorOf(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 407:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case 500:
        return QNetworkReply::InternalServerError;
    case 503:
        return QNetworkReply::ServiceUnavailableError;
    default:
        return status > 500 ? QNetworkReply::UnknownServerError : QNetworkReply::UnknownContentError;
    }
}

QNetworkReply::NetworkError errorOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return QNetworkReply::ConnectionRefusedError;
    case QAbstractSocket::HostNotFoundError:
        return QNetworkReply::HostNotFoundError;
    case QAbstractSocket::SocketTimeoutError:
        return QNetworkReply::TimeoutError;
    case QAbstractSocket::SslHandshakeFailedError:
        return QNetworkReply::SslHandshakeFailedError;
    case QAbstractSocket::ProxyAuthenticationRequiredError:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case QAbstractSocket::ProxyConnectionRefusedError:
        return QNetworkReply::ProxyConnectionRefusedError;
    case QAbstractSocket::ProxyNotFoundError:
        return QNetworkReply::ProxyNotFoundError;
    default:
        return QNetworkReply::UnknownNetworkError;
    }
}

} // namespace Http
