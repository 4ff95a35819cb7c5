// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QNetworkProxyFactory>

/// Offers one proxy for whatever is asked: as an HTTP, an FTP and a SOCKS proxy in this order, or, where it
/// is no proxy at all, the direct way alone.
class ProxyFactory : public QNetworkProxyFactory
{
public:
    explicit ProxyFactory(const QNetworkProxy &proxy);
    ~ProxyFactory() override;

    /// The whole list, whatever the query.
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query = QNetworkProxyQuery()) override;

private:
    QList<QNetworkProxy> m_proxies;
};
