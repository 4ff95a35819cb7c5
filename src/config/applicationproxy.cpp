// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/applicationproxy.h"

#include "config/keys.h"

#include <QHostAddress>
#include <QUrl>

#include <algorithm>
#include <atomic>
#include <limits>

namespace ApplicationProxy {

namespace {

/// Sockets ask for their proxy in their own thread.
std::atomic<bool> localHostsGoDirect{false};

class Factory : public QNetworkProxyFactory
{
public:
    explicit Factory(const QNetworkProxy &proxy)
        : m_proxy(proxy)
    { }

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return {isLocal(query.peerHostName()) ? QNetworkProxy(QNetworkProxy::NoProxy) : m_proxy};
    }

private:
    QNetworkProxy m_proxy;
};

} // namespace

QNetworkProxy fromSettings(const QJsonObject &proxy)
{
    if (!proxy.value(Key::enabled).toBool())
        return QNetworkProxy(QNetworkProxy::NoProxy);
    const int port = proxy.value(Key::port).toInt();
    const bool isPort = port > 0 && port <= std::numeric_limits<quint16>::max();
    return QNetworkProxy(QNetworkProxy::HttpProxy, proxy.value(Key::address).toString(),
                         isPort ? static_cast<quint16>(port) : 0, proxy.value(Key::userName).toString(),
                         proxy.value(Key::password).toString());
}

bool install(const QJsonObject &proxy)
{
    const QNetworkProxy before = QNetworkProxy::applicationProxy();
    const QNetworkProxy wanted = fromSettings(proxy);
    const bool direct = proxy.value(Key::noProxyForLan).toBool() && wanted.type() != QNetworkProxy::NoProxy;
    if (direct)
        QNetworkProxyFactory::setApplicationProxyFactory(new Factory(wanted));
    else
        QNetworkProxy::setApplicationProxy(wanted);
    return localHostsGoDirect.exchange(direct) != direct || wanted != before;
}

bool goesDirect(const QString &host)
{
    return localHostsGoDirect && isLocal(host);
}

bool isLocal(const QString &host)
{
    QList<QNetworkAddressEntry> own;
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces())
        own += interface.addressEntries();
    return isLocal(host, own);
}

bool isLocal(const QString &host, const QList<QNetworkAddressEntry> &own)
{
    const QHostAddress address(host);
    if (address.isNull())
        return !host.isEmpty()
            && (!host.contains(QLatin1Char('.'))
                || host.endsWith(QLatin1String(".local"), Qt::CaseInsensitive));
    if (address.isLoopback() || address.isLinkLocal())
        return true;
    return std::any_of(own.begin(), own.end(), [&address](const QNetworkAddressEntry &entry) {
        return entry.prefixLength() > 0 && address.isInSubnet(entry.ip(), entry.prefixLength());
    });
}

bool bypassedFor(const QString &server, const QJsonObject &proxy)
{
    if (!proxy.value(Key::noProxyForLan).toBool())
        return false;
    const bool isAddress = !QHostAddress(server).isNull();
    return isLocal(isAddress ? server : QUrl(QLatin1String("//") + server).host());
}

} // namespace ApplicationProxy
