// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/applicationproxy.h"

#include "config/keys.h"

#include <limits>

namespace ApplicationProxy {

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

bool install(const QNetworkProxy &proxy)
{
    const QNetworkProxy before = QNetworkProxy::applicationProxy();
    QNetworkProxy::setApplicationProxy(proxy);
    return proxy != before;
}

} // namespace ApplicationProxy
