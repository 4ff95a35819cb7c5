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

WifiItem scanned(const char *essid, const char *security, const char *encryption)
{
    WifiItem item(QString::fromLatin1(essid));
    item.security = QLatin1String(security);
    item.encrypt = QLatin1String(encryption);
    return item;
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

    void wirelessInterface_data()
    {
        const TestTable<QByteArray, QByteArray, QStringList> table("type", "essid", "expected");
        const auto row = [&table](const char *name, const char *type, const char *essid,
                                  const char *expected) {
            table.row(name, QByteArray(type), QByteArray(essid), QString::fromLatin1(expected).split('|'));
        };
        row("static", "static", "one", "true|one|false|personal|ccmp|static|10.0.0.5|255.255.255.0|10.0.0.1");
        row("the later of two", "dhcp", "two", "true|two|false|open||dhcp|||");
        row("not in the scan", "dhcp", "One", "true|One|true|open|auto|dhcp|||");
        row("neither dhcp nor static", "auto", "one", "true|one|false|personal|ccmp|dhcp|||");
        row("absent", "static", nullptr, "false||false|open|auto|dhcp|||");
    }

    void wirelessInterface()
    {
        QFETCH(const QByteArray, type);
        QFETCH(const QByteArray, essid);
        Defaults::NetworkState state;
        state.wirelessPresent = !essid.isNull();
        state.wireless = addressed(type);
        state.wireless.setEssid(QString::fromLatin1(essid));
        state.scan = {scanned("two", "enterprise", "auto"), scanned("one", "personal", "ccmp"),
                      scanned("two", "open", "")};
        const QJsonObject wlan = Defaults::wirelessInterface(state);
        QStringList values;
        for (const char *key : {"enabled", "ssid", "hidden ssid", "security", "encryption", "type",
                                "IP address", "network mask", "default gateway"})
            values += wlan.value(QLatin1String(key)).toVariant().toString();
        QTEST(values, "expected");
        QCOMPARE(wlan.size(), 17);
    }
};

QTEST_APPLESS_MAIN(DefaultsTest)
#include "defaultstest.moc"
