// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/defaults.h"
#include "config/keys.h"
#include "testtable.h"

#include <QtTest>

namespace {

QByteArray text(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

NetworkProperty addressed(const char *type)
{
    NetworkProperty property("10.0.0.5", "255.255.255.0", "10.0.0.1", QString(), QString(), false);
    property.setTypeIp(QLatin1String(type));
    return property;
}

} // namespace

/// The factory document.
class DefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeDocument()
    {
        QFile file(QFINDTESTDATA("data/defaults.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject expected = QJsonDocument::fromJson(file.readAll()).object();
        QCOMPARE(expected.size(), 17);
        const QJsonObject document = Defaults::document("ward-3", Defaults::networkSettings({}));
        // By section, so that a failure names the one.
        QCOMPARE(document.keys(), expected.keys());
        for (const QString &section : document.keys())
            QCOMPARE(text({{section, document.value(section)}}), text({{section, expected.value(section)}}));
    }

    void wiredInterface_data()
    {
        const TestTable<bool, QByteArray, QByteArray> table("present", "type", "expected");
        table.row("dhcp", true, "dhcp",
                  R"({"Ip address":"","default gateway":"","enabled":true,)"
                  R"("network mask":"","type":"dhcp"})");
        // The mask and the gateway stand crosswise.
        table.row("static", true, "static",
                  R"({"Ip address":"10.0.0.5","default gateway":"255.255.255.0",)"
                  R"("enabled":true,"network mask":"10.0.0.1","type":"static"})");
        table.row("other", true, "DHCP", R"({"enabled":true})");
        table.row("absent", false, "static",
                  R"({"IP address":"","default gateway":"","enabled":false,)"
                  R"("network mask":"","type":"dhcp"})");
    }

    void wiredInterface()
    {
        QFETCH(const bool, present);
        QFETCH(const QByteArray, type);
        QTEST(text(Defaults::wiredInterface(present, addressed(type))), "expected");
    }

    void takesTheSecurityOfWirelessFromTheScan()
    {
        Defaults::NetworkState state;
        state.wirelessPresent = true;
        state.wireless = addressed("static");
        state.wireless.setEssid("one");
        WifiItem seen("one");
        seen.security = "personal";
        seen.encrypt = "ccmp";
        state.scan = {WifiItem("two"), seen};
        const auto values = [&state] {
            const QJsonObject wlan = Defaults::wirelessInterface(state);
            QStringList result;
            for (const char *key : {"enabled", "ssid", "hidden ssid", "security", "encryption", "IP address"})
                result += wlan.value(QLatin1String(key)).toVariant().toString();
            return result.join('|');
        };
        QCOMPARE(values(), "true|one|false|personal|ccmp|10.0.0.5");
        state.wireless.setEssid("One");
        QCOMPARE(values(), "true|One|true|open|auto|10.0.0.5");
        state.wirelessPresent = false;
        QCOMPARE(values(), "false||false|open|auto|");
    }
};

QTEST_APPLESS_MAIN(DefaultsTest)
#include "defaultstest.moc"
