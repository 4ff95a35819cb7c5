// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/systembus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace SystemBus {

namespace {

constexpr int limitMs = 20000;

} // namespace

QString call(const Method &method, const QVariantList &arguments)
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return QStringLiteral("no system bus");
    QDBusMessage message
        = QDBusMessage::createMethodCall(QLatin1String(method.service), QLatin1String(method.path),
                                         QLatin1String(method.interface), QLatin1String(method.name));
    message.setArguments(arguments);
    const QDBusMessage reply = bus.call(message, QDBus::Block, limitMs);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return {};
    return reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
}

bool isRunning(const char *service)
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(QLatin1String(service));
}

} // namespace SystemBus
