// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/proxyfactory.h"

#include <QDebug>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcProxy, "kt.device.proxy")

ProxyFactory::ProxyFactory(const QNetworkProxy &proxy,
                           const std::function<bool(const QString &host)> &goesDirect)
    : m_proxies({proxy})
    , m_goesDirect(goesDirect)
{
    if (proxy.type() != QNetworkProxy::NoProxy) {
        for (const auto type : {QNetworkProxy::FtpCachingProxy, QNetworkProxy::Socks5Proxy}) {
            m_proxies += proxy;
            m_proxies.last().setType(type);
        }
    }
    QString list;
    for (const QNetworkProxy &entry : qAsConst(m_proxies))
        QDebug(&list).nospace() << (list.isEmpty() ? "" : ", ") << entry;
    qCDebug(lcProxy).noquote() << list;
}

ProxyFactory::~ProxyFactory() = default;

QList<QNetworkProxy> ProxyFactory::queryProxy(const QNetworkProxyQuery &query)
{
    if (m_goesDirect && m_goesDirect(query.peerHostName()))
        return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return m_proxies;
}
