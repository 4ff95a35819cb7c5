// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/proxyfactory.h"

#include <QDebug>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcProxy, "kt.device.proxy")

ProxyFactory::ProxyFactory(const QNetworkProxy &proxy)
    : m_proxies({proxy})
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

QList<QNetworkProxy> ProxyFactory::queryProxy(const QNetworkProxyQuery &)
{
    return m_proxies;
}
