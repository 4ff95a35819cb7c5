// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QNetworkProxyFactory>

#include <functional>

/// Offers one proxy for whatever is asked: as an HTTP, an FTP and a SOCKS proxy in this order, or, where it
/// is no proxy at all, the direct way alone.
class ProxyFactory : public QNetworkProxyFactory
{
public:
    /// `goesDirect` tells which hosts are reached without the proxy; without it there are none.
    explicit ProxyFactory(const QNetworkProxy &proxy,
                          const std::function<bool(const QString &host)> &goesDirect = nullptr);
    ~ProxyFactory() override;

    /// The whole list for every host but those that are reached directly.
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query = QNetworkProxyQuery()) override;

private:
    QList<QNetworkProxy> m_proxies;
    std::function<bool(const QString &host)> m_goesDirect;
};
