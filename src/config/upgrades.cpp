// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/upgrades.h"

#include "config/defaults.h"
#include "config/keys.h"

namespace Upgrades {

namespace {

/// Words that appear only in older documents.
namespace Old {
inline constexpr QLatin1String connectionMode("connection mode");
inline constexpr QLatin1String automatic("auto");
inline constexpr QLatin1String ethernet("ethernet");
inline constexpr QLatin1String manually("manually");
inline constexpr QLatin1String ip("ip");
inline constexpr QLatin1String netmask("netmask");
inline constexpr QLatin1String gateway("gateway");
inline constexpr QLatin1String dns("dns");
inline constexpr QLatin1String wifi("wifi");
inline constexpr QLatin1String essid("essid");
inline constexpr QLatin1String key("key");
inline constexpr QLatin1String wpa("WPA");
} // namespace Old

QJsonObject newWired(const QJsonObject &ethernet)
{
    const QString type = ethernet.value(Key::type).toString();
    return {{Key::enabled, ethernet.value(Key::enabled).toBool()},
            {Key::type, type == Old::manually ? QStringLiteral("static") : type},
            {Key::ipAddress, ethernet.value(Old::ip).toString()},
            {Key::networkMask, ethernet.value(Old::netmask).toString()},
            {Key::defaultGateway, ethernet.value(Old::gateway).toString()}};
}

QJsonObject newWireless(const QJsonObject &wifi)
{
    return {{Key::enabled, wifi.value(Key::enabled).toBool()},
            {Key::ssid, wifi.value(Old::essid).toString()},
            {Key::passphrase, wifi.value(Old::key).toString()}};
}

/// Derives "security" from the old "encryption", or without one from the pass phrase.
void deriveSecurity(QJsonObject &wlan)
{
    const QString open = QStringLiteral("open");
    const QString personal = QStringLiteral("personal");
    const QJsonValue encryption = wlan.value(Key::encryption);
    if (!isPresent(encryption))
        wlan.insert(Key::wifiSecurity, wlan.value(Key::passphrase).toString().isEmpty() ? open : personal);
    else if (encryption == QJsonValue(QString()))
        wlan.insert(Key::wifiSecurity, open);
    else if (encryption == QJsonValue(Old::wpa))
        wlan.insert(Key::wifiSecurity, personal);
}

void copyIfPresent(QLatin1String key, const QJsonObject &from, QJsonObject &to)
{
    if (isPresent(from.value(key)))
        to.insert(key, from.value(key));
}

/// The members of the flat connection section that keep their names.
QJsonObject flatConnection(const QJsonObject &old)
{
    QJsonObject corvid;
    copyIfPresent(Key::allowManualAddress, old, corvid);
    copyIfPresent(Key::showAutodetected, old, corvid);
    return corvid;
}

/// The old auto-connect object, enabled according to the old mode.
QJsonObject switchedAutoconnect(const QJsonObject &old)
{
    QJsonObject autoconnect = old.value(Key::autoconnect).toObject();
    autoconnect.insert(Key::enabled, old.value(Old::connectionMode).toString() == Old::automatic);
    return autoconnect;
}

QJsonObject connectionFrom(const QJsonObject &old)
{
    QJsonObject autoconnect = switchedAutoconnect(old);
    const QJsonObject complete = Defaults::autoconnect();
    for (auto member = complete.begin(); member != complete.end(); ++member) {
        if (!isPresent(autoconnect.value(member.key())))
            autoconnect.insert(member.key(), member.value());
    }
    QJsonObject corvid = flatConnection(old);
    corvid.insert(Key::autoconnect, autoconnect);

    QJsonObject solva = Defaults::solvaConnection();
    solva.insert(Key::autoconnect, QJsonObject{{Key::enabled, false}, {Key::desktop, QString()}});
    return {{Key::corvidConnection, corvid},
            {Key::solvaConnection, solva},
            {Key::rdpConnection, Defaults::rdpConnection()}};
}

QJsonObject wirelessFrom(const QJsonObject &old)
{
    QJsonObject wlan = old;
    deriveSecurity(wlan);
    QJsonObject fresh = Defaults::wirelessAuthentication();
    fresh.remove(Key::passphrase);
    fresh.insert(Key::encryption, QStringLiteral("auto"));
    fresh.insert(Key::hiddenSsid, false);
    for (auto member = fresh.begin(); member != fresh.end(); ++member)
        wlan.insert(member.key(), member.value());
    return wlan;
}

QJsonObject networkFrom(const QJsonObject &old)
{
    QJsonObject interfaces = old.value(Key::interfaces).toObject();
    interfaces.insert(Key::wlan, wirelessFrom(interfaces.value(Key::wlan).toObject()));
    const QJsonObject oldDns = old.value(Key::dns).toObject();
    QJsonObject dns;
    for (const QLatin1String key : {Key::type, Key::dns1, Key::dns2, Key::domain})
        dns.insert(key, oldDns.value(key).toString());

    QJsonObject network = old;
    network.insert(Key::interfaces, interfaces);
    network.insert(Key::dns, dns);
    network.insert(Key::proxy, Defaults::proxy());
    return network;
}

} // namespace

bool isPresent(const QJsonValue &value)
{
    return !value.isUndefined() && !value.isNull();
}

int statedVersion(const QJsonObject &root)
{
    const QJsonValue info = root.value(Key::firmwareInfo);
    return isPresent(info) ? info.toObject().value(Key::configurationVersion).toInt() : oldestVersion;
}

int effectiveVersion(const QJsonObject &root)
{
    return qMax(statedVersion(root), oldestVersion);
}

bool hasOldNetwork(const QJsonObject &root)
{
    const QJsonValue network = root.value(Key::network);
    const QJsonObject members = network.toObject();
    return isPresent(network)
        && !(isPresent(members.value(Key::interfaces)) && isPresent(members.value(Key::dns)));
}

void toNewNetwork(QJsonObject &root)
{
    QJsonObject network = root.value(Key::network).toObject();
    const QJsonObject ethernet = network.value(Old::ethernet).toObject();
    QJsonObject interfaces = network.value(Key::interfaces).toObject();
    interfaces.insert(Key::eth, newWired(ethernet));
    interfaces.insert(Key::wlan, newWireless(network.value(Old::wifi).toObject()));
    network.insert(Key::interfaces, interfaces);
    network.insert(Key::dns, QJsonObject{{Key::dns1, ethernet.value(Old::dns).toString()}});
    root.insert(Key::network, network);
}

void toVersion15(QJsonObject &root)
{
    QJsonObject general = root.value(Key::general).toObject();
    general.insert(Key::clientMode, Defaults::clientMode);
    root.insert(Key::general, general);
    root.insert(Key::firmwareInfo, Defaults::firmwareInfo());
    root.insert(Key::connection, connectionFrom(root.value(Key::connection).toObject()));
    root.insert(Key::keyboard, Defaults::keyboard());
    root.insert(Key::management, Defaults::management());
    root.insert(Key::security, Defaults::security());
    root.insert(Key::dateTime, Defaults::dateTime());
    root.insert(Key::network, networkFrom(root.value(Key::network).toObject()));
    root.insert(Key::shadowing, Defaults::shadowing());
}

void partialToVersion15(QJsonObject &root)
{
    root.insert(Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 15}});

    QJsonObject network = root.value(Key::network).toObject();
    QJsonObject interfaces = network.value(Key::interfaces).toObject();
    if (interfaces.value(Key::wlan).isObject()) {
        QJsonObject wlan = interfaces.value(Key::wlan).toObject();
        deriveSecurity(wlan);
        interfaces.insert(Key::wlan, wlan);
        network.insert(Key::interfaces, interfaces);
        root.insert(Key::network, network);
    }

    const QJsonValue connection = root.value(Key::connection);
    if (isPresent(connection)) {
        const QJsonObject old = connection.toObject();
        QJsonObject corvid = flatConnection(old);
        if (isPresent(old.value(Old::connectionMode)))
            corvid.insert(Key::autoconnect, switchedAutoconnect(old));
        root.insert(Key::connection, QJsonObject{{Key::corvidConnection, corvid}});
    }
}

} // namespace Upgrades
