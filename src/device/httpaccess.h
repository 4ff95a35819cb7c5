// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QNetworkAccessManager>
#include <QNetworkProxy>

/// A network access manager for servers that nobody vouches for. Its HTTP replies are `HttpReply` objects,
/// which bound what a server sends. It keeps no cookies, no credentials and no connections. Each request
/// trusts the certificates that the device has at that moment.
class HttpAccess : public QNetworkAccessManager
{
    Q_OBJECT

public:
    using QNetworkAccessManager::QNetworkAccessManager;

    /// The proxy to use for a URL.
    QNetworkProxy proxyFor(const QUrl &url) const;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *body) override;
};
