// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/httpaccess.h"

#include "device/httpreply.h"
#include "device/tlstrust.h"

QNetworkProxy HttpAccess::proxyFor(const QUrl &url) const
{
    const QNetworkProxyQuery query(url);
    if (QNetworkProxyFactory *factory = proxyFactory())
        return factory->queryProxy(query).value(0, QNetworkProxy::NoProxy);
    if (proxy().type() != QNetworkProxy::DefaultProxy)
        return proxy();
    return QNetworkProxyFactory::proxyForQuery(query).value(0, QNetworkProxy::NoProxy);
}

QNetworkReply *HttpAccess::createRequest(Operation operation, const QNetworkRequest &request, QIODevice *body)
{
    TlsTrust::refresh();
    if (!HttpReply::isSupported(operation, request.url()))
        return QNetworkAccessManager::createRequest(operation, request, body);
    return new HttpReply(*this, operation, request, body ? body->readAll() : QByteArray());
}
