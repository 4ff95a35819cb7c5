// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/networkservice.h"

#include "devicetools/tool.h"

#include <NetworkManagerQt/Connection>
#include <NetworkManagerQt/Manager>
#include <NetworkManagerQt/Settings>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace NetworkService {

namespace {

const QString service = QStringLiteral("org.freedesktop.NetworkManager");
const QString managerPath = QStringLiteral("/org/freedesktop/NetworkManager");
/// A call that NetworkManager does not answer by then is not answered at all.
constexpr int callLimitMs = 10000;

QDBusPendingCall call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::systemBus().asyncCall(message, callLimitMs);
}

} // namespace

bool isThere()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    if (bus.isConnected() && bus.interface()->isServiceRegistered(service)) {
        NetworkManager::notifier(); // registers the types of the bus
        return true;
    }
    Tool::fail(QStringLiteral("NetworkManager does not run"));
    return false;
}

NetworkManager::Device::Ptr device(const QString &interface)
{
    for (const NetworkManager::Device::Ptr &candidate : NetworkManager::networkInterfaces()) {
        if (candidate->interfaceName() == interface)
            return candidate;
    }
    return {};
}

bool succeeded(const QDBusPendingCall &pending, QString &error)
{
    QDBusPendingCall waiting = pending;
    waiting.waitForFinished();
    if (waiting.isError())
        error = waiting.error().message();
    return !waiting.isError();
}

bool setProperty(const QString &path, const QString &interface, const QString &name, const QVariant &value,
                 QString &error)
{
    return succeeded(call(path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
                          {interface, name, QVariant::fromValue(QDBusVariant(value))}),
                     error);
}

bool setManaged(const NetworkManager::Device::Ptr &device, bool managed, QString &error)
{
    return device->managed() == managed
        || setProperty(device->uni(), service + QLatin1String(".Device"), QStringLiteral("Managed"), managed,
                       error);
}

QString profilePath(const QString &uuid)
{
    // Not from the library's list, which learns of a new profile only later.
    QDBusPendingReply<QDBusObjectPath> reply
        = call(managerPath + QLatin1String("/Settings"), service + QLatin1String(".Settings"),
               QStringLiteral("GetConnectionByUuid"), {uuid});
    reply.waitForFinished();
    return reply.isValid() ? reply.value().path() : QString();
}

NMVariantMapMap profile(const QString &uuid)
{
    const QString path = profilePath(uuid);
    if (path.isEmpty())
        return {};
    QDBusPendingReply<NMVariantMapMap> reply
        = call(path, service + QLatin1String(".Settings.Connection"), QStringLiteral("GetSettings"), {});
    reply.waitForFinished();
    return reply.isValid() ? reply.value() : NMVariantMapMap();
}

bool isToConnect(const QString &uuid)
{
    const NMVariantMapMap stored = profile(uuid);
    return !stored.isEmpty()
        && stored.value(QStringLiteral("connection")).value(QStringLiteral("autoconnect"), true).toBool();
}

bool storeProfile(const NMVariantMapMap &profile, QString &error)
{
    const QString uuid = profile.value(QStringLiteral("connection")).value(QStringLiteral("uuid")).toString();
    const QString path = profilePath(uuid);
    return path.isEmpty() ? succeeded(NetworkManager::addConnection(profile), error)
                          : succeeded(NetworkManager::Connection(path).update(profile), error);
}

bool removeProfile(const QString &uuid, QString &error)
{
    const QString path = profilePath(uuid);
    return path.isEmpty() || succeeded(NetworkManager::Connection(path).remove(), error);
}

bool setNameServers(const QStringList &servers, const QString &domain, QString &error)
{
    QVariantMap configuration;
    if (!servers.isEmpty()) {
        const QVariantMap forAll{{QStringLiteral("servers"), servers}};
        configuration.insert(QStringLiteral("domains"), QVariantMap{{QStringLiteral("*"), forAll}});
        if (!domain.isEmpty())
            configuration.insert(QStringLiteral("searches"), QStringList{domain});
    }
    return setProperty(managerPath, service, QStringLiteral("GlobalDnsConfiguration"), configuration, error);
}

} // namespace NetworkService
