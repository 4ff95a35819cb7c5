// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/wifisettings.h"

#include "config/keys.h"

namespace WifiSettings {

namespace {

struct Text
{
    QLatin1String key;
    QString WifiItem::*member;
};

constexpr Text texts[] = {
    {Key::wifiSecurity, &WifiItem::security},
    {Key::passphrase, &WifiItem::password},
    {Key::encryption, &WifiItem::encrypt},
    {Key::advancedSecurity, &WifiItem::advancedSecurity},
    {Key::authenticationMethod, &WifiItem::authenticationMethod},
    {Key::userName, &WifiItem::userName},
    {Key::userPassword, &WifiItem::userPassword},
    {Key::caCertificate, &WifiItem::caCert},
    {Key::pkcs12Certificate, &WifiItem::clientCert},
    {Key::pkcs12Password, &WifiItem::clientCertPassword},
};

} // namespace

WifiItem read(const QJsonObject &wlan)
{
    WifiItem item(wlan.value(Key::ssid).toString());
    item.hidden = wlan.value(Key::hiddenSsid).toBool();
    for (const Text &text : texts)
        item.*text.member = wlan.value(text.key).toString();
    return item;
}

void write(const WifiItem &item, QJsonObject &wlan)
{
    wlan.insert(Key::ssid, item.essid());
    wlan.insert(Key::hiddenSsid, item.hidden);
    for (const Text &text : texts)
        wlan.insert(text.key, item.*text.member);
}

void copyCredentials(const WifiItem &from, WifiItem &to)
{
    to.hidden = from.hidden;
    for (const Text &text : texts)
        to.*text.member = from.*text.member;
}

void complete(WifiItem &item)
{
    const auto orElse = [](QString &word, const char *usual) {
        if (word.isEmpty())
            word = QLatin1String(usual);
    };
    orElse(item.security, "open");
    orElse(item.encrypt, "auto");
    orElse(item.advancedSecurity, "auto");
    orElse(item.authenticationMethod, "peap");
}

} // namespace WifiSettings
