// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/settingssections.h"

#include "config/keys.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>

namespace SettingsSections {

namespace {

const QString application = QStringLiteral("application");

QJsonObject member(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toObject();
}

bool saysNothing(const QJsonValue &value)
{
    return value.isNull() || value == QJsonValue(false) || value == QJsonValue(QString());
}

/// The address was once spelt otherwise, and only a static interface has one. What is missing means the same
/// as what is empty.
QJsonObject interface(const QJsonObject &root, QLatin1String key)
{
    QJsonObject settings = member(member(member(root, Key::network), Key::interfaces), key);
    if (!settings.value(Key::enabled).toBool())
        return {};
    if (settings.value(Key::ipAddress).toString().isEmpty())
        settings.insert(Key::ipAddress, settings.value(Key::wiredIpAddress));
    settings.remove(Key::wiredIpAddress);
    if (settings.value(Key::type) != QJsonValue(QStringLiteral("static"))) {
        settings.insert(Key::type, QStringLiteral("dhcp"));
        for (const QLatin1String address : {Key::ipAddress, Key::networkMask, Key::defaultGateway})
            settings.remove(address);
    }
    for (auto setting = settings.begin(); setting != settings.end();) {
        if (saysNothing(setting.value()))
            setting = settings.erase(setting);
        else
            ++setting;
    }
    return settings;
}

QJsonObject nameServers(const QJsonObject &root)
{
    QJsonObject dns = member(member(root, Key::network), Key::dns);
    if (dns.value(Key::type).toString().isEmpty())
        dns.insert(Key::type, QStringLiteral("dhcp"));
    for (const QLatin1String key : {Key::dns1, Key::dns2, Key::domain})
        dns.insert(key, dns.value(key).toString());
    return dns;
}

/// The tool that sets the primary display's mode lays out a second display too.
QJsonObject displays(const QJsonObject &root)
{
    const QJsonObject display = member(root, Key::display);
    const QJsonObject second = member(display, Key::secondary);
    QJsonObject result{{Key::primary, member(display, Key::primary).value(Key::resolution).toString()},
                       {Key::secondary, second.value(Key::resolution).toString()},
                       {Key::position, second.value(Key::position).toString()},
                       {Key::multiMonitorMode, display.value(Key::multiMonitorMode).toString()}};
    for (const QLatin1String key : {Key::primary, Key::secondary}) {
        if (result.value(key).toString().isEmpty())
            result.insert(key, QStringLiteral("Automatic"));
    }
    return result;
}

QJsonObject timeServer(const QJsonObject &root)
{
    const QJsonObject time = member(root, Key::dateTime);
    return time.value(Key::ntpEnabled).toBool()
        ? QJsonObject{{Key::ntpServer, time.value(Key::ntpServer).toString()}}
        : QJsonObject();
}

/// The tool of the client mode hands an application the whole document, but for what the device decides
/// itself.
QJsonValue client(const QJsonObject &root)
{
    const QString mode = member(root, Key::general).value(Key::clientMode).toString();
    if (mode != application)
        return QStringLiteral("launcher");
    QJsonObject rest = root;
    rest.remove(Key::mainWindow);
    rest.remove(Key::audio);
    return rest;
}

QJsonValue value(const QJsonObject &root, Section section)
{
    switch (section) {
    case HostName:
        return member(root, Key::general).value(Key::deviceName).toString();
    case Network:
        return root.value(Key::network);
    case Wired:
        return interface(root, Key::eth);
    case Wireless:
        return interface(root, Key::wlan);
    case Dns:
        return nameServers(root);
    case DisplayMode:
        return displays(root);
    case ScreenSaver:
        return member(root, Key::display).value(Key::screenSaverTimeout).toInt();
    case KeyboardLayout:
        return member(root, Key::keyboard).value(Key::layout).toString();
    case NumLock:
        return member(root, Key::keyboard).value(Key::numlockOn).toBool();
    case TimeZone:
        return member(root, Key::dateTime).value(Key::timezone).toString();
    case TimeServer:
        return timeServer(root);
    case ClientMode:
        return client(root);
    }
    return QJsonValue();
}

} // namespace

const QVector<Section> &all()
{
    static const QVector<Section> sections
        = {HostName,    Network,        Wired,   Wireless, Dns,        DisplayMode,
           ScreenSaver, KeyboardLayout, NumLock, TimeZone, TimeServer, ClientMode};
    return sections;
}

Sections before(Section section)
{
    return Sections(section - 1); // the flags are in order
}

QLatin1String name(Section section)
{
    switch (section) {
    case HostName:
        return QLatin1String("host name");
    case Network:
        return QLatin1String("network");
    case Wired:
        return QLatin1String("wired");
    case Wireless:
        return QLatin1String("wireless");
    case Dns:
        return QLatin1String("DNS");
    case DisplayMode:
        return QLatin1String("display mode");
    case ScreenSaver:
        return QLatin1String("screen saver");
    case KeyboardLayout:
        return QLatin1String("keyboard layout");
    case NumLock:
        return QLatin1String("NumLock");
    case TimeZone:
        return QLatin1String("time zone");
    case TimeServer:
        return QLatin1String("time server");
    case ClientMode:
        return QLatin1String("client mode");
    }
    return QLatin1String();
}

QByteArray fingerprint(const QJsonObject &root, Section section)
{
    const QByteArray text = QJsonDocument(QJsonArray{value(root, section)}).toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
}

} // namespace SettingsSections
