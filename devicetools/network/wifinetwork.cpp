// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/wifinetwork.h"

#include "devicetools/checks.h"
#include "devicetools/document.h"

namespace {

const QString certificates = QStringLiteral("/var/lib/kt964/certificates/");
constexpr int longestSecret = 256;

QString orAuto(const QString &word)
{
    return word.isEmpty() ? QStringLiteral("auto") : word;
}

/// The client certificate of a call: ".p12" alone stands for none.
QString clientFile(const QString &name)
{
    return name == QLatin1String(".p12") || name.isEmpty()
        ? QString()
        : certificates + name.section(QLatin1Char('/'), -1);
}

} // namespace

WifiNetwork WifiNetwork::fromDocument(const QJsonObject &wlan)
{
    WifiNetwork network;
    network.ssid = Document::text(wlan, "ssid");
    network.hidden = wlan.value(QLatin1String("hidden ssid")).toBool();
    const QString security = Document::text(wlan, "security");
    network.encryption = orAuto(Document::text(wlan, "encryption"));
    network.advancedSecurity = orAuto(Document::text(wlan, "advanced security"));
    if (security == QLatin1String("personal")) {
        network.security = Security::Personal;
        network.key = Document::text(wlan, "passphrase");
    } else if (security == QLatin1String("enterprise")) {
        network.security = Security::Enterprise;
        network.method = Document::text(wlan, "authentication method");
        network.user = Document::text(wlan, "user name");
        network.password = Document::text(wlan, "user password");
        const QString authority = Document::text(wlan, "ca certificate");
        if (!authority.isEmpty())
            network.caCertificate = certificates + QLatin1String("cacerts") + authority;
        network.clientCertificate
            = clientFile(Document::text(wlan, "pkcs12 certificate") + QLatin1String(".p12"));
        network.clientPassword = Document::text(wlan, "pkcs12 password");
    }
    return network;
}

WifiNetwork WifiNetwork::fromArguments(const QStringList &arguments)
{
    WifiNetwork network;
    network.ssid = arguments.value(0);
    network.key = arguments.value(1);
    network.security = network.key.isEmpty() ? Security::Open : Security::Personal;
    network.hidden = arguments.value(2) == QLatin1String("1");
    network.encryption = network.advancedSecurity = QStringLiteral("auto");
    return network;
}

WifiNetwork WifiNetwork::fromEnterpriseArguments(const QStringList &arguments)
{
    WifiNetwork network;
    network.security = Security::Enterprise;
    network.ssid = arguments.value(0);
    network.user = arguments.value(1);
    network.method = arguments.value(2);
    network.encryption = orAuto(arguments.value(3));
    network.advancedSecurity = orAuto(arguments.value(4));
    network.hidden = arguments.value(5) == QLatin1String("1");
    network.caCertificate = arguments.value(6);
    network.clientCertificate = clientFile(arguments.value(7));
    network.password = arguments.value(8);
    network.clientPassword = arguments.value(9);
    return network;
}

QString WifiNetwork::problem() const
{
    static const QStringList encryptions{QStringLiteral("auto"), QStringLiteral("tkip"),
                                         QStringLiteral("ccmp")};
    static const QStringList securities{QStringLiteral("auto"), QStringLiteral("wpa"),
                                        QStringLiteral("wpa2")};
    static const QStringList methods{QStringLiteral("peap"), QStringLiteral("ttls"), QStringLiteral("tls")};
    if (!Checks::isSsid(ssid))
        return QStringLiteral("the network's name has 1 to 32 bytes");
    if (security == Security::Open)
        return {};
    if (!encryptions.contains(encryption) || !securities.contains(advancedSecurity))
        return QStringLiteral("no such encryption or security");
    if (security == Security::Personal)
        return Checks::isWpaKey(key) ? QString() : QStringLiteral("a pass phrase has 8 to 63 characters");
    if (!methods.contains(method))
        return QStringLiteral("no such authentication method");
    for (const QString &text : {user, password, clientPassword}) {
        if (!Checks::isPlainText(text, longestSecret))
            return QStringLiteral("user names and passwords have up to 256 characters");
    }
    if (method == QLatin1String("tls") ? clientCertificate.isEmpty() : user.isEmpty())
        return QStringLiteral("the user or the client certificate is missing");
    return {};
}
