// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "documents.h"

#include "config/configurationmanager.h"
#include "config/keys.h"
#include "config/upgrades.h"
#include "testtable.h"

namespace {

/// Knows steps beyond the present version: from 15 to 16, and from 16 to nowhere.
class ManagerOfTomorrow : public ConfigurationManager
{
public:
    explicit ManagerOfTomorrow(int targetVersion)
        : ConfigurationManager(targetVersion)
    {
        addStep(15, [](QJsonObject &object) {
            object.insert(Key::firmwareInfo, QJsonObject{{Key::configurationVersion, 16}});
        });
        addStep(16, [](QJsonObject &) {});
    }
};

QJsonObject wireless(const QJsonObject &root)
{
    return root[Key::network][Key::interfaces][Key::wlan].toObject();
}
} // namespace

/// Older documents become documents of the present version.
class UpgradesTest : public QObject
{
    Q_OBJECT

private slots:
    void upgradesDocuments_data()
    {
        const TestTable<bool> table("whole");
        for (const char *name : {"old-network", "version-14", "bare", "wrong-types"})
            table.row(name, true);
        for (const char *name : {"partial", "partial-no-mode"})
            table.row(name, false);
    }

    void upgradesDocuments()
    {
        QFETCH(bool, whole);
        const QString name = QLatin1String(QTest::currentDataTag());
        QJsonObject root = Documents::object(name + ".json");
        QCOMPARE(Upgrades::effectiveVersion(root), 14);
        if (whole && Upgrades::hasOldNetwork(root))
            Upgrades::toNewNetwork(root);
        if (whole)
            Upgrades::toVersion15(root);
        else
            QVERIFY(ConfigurationManager(15).upgradeConfiguration(root));
        QCOMPARE(root, Documents::object(name + ".upgraded.json"));
    }

    void derivesTheSecurityOfWireless_data() { Documents::addRows("wireless-security.json"); }
    void derivesTheSecurityOfWireless()
    {
        QFETCH(QJsonObject, row);
        QJsonObject wlan = row[Key::wlan].toObject();
        QJsonObject whole = {{Key::network, QJsonObject{{Key::interfaces, QJsonObject{{Key::wlan, wlan}}}}}};
        QJsonObject partial = whole;
        Upgrades::toVersion15(whole);
        Upgrades::partialToVersion15(partial);
        QCOMPARE(wireless(whole)[Key::wifiSecurity], row[Key::wifiSecurity]);
        wlan.insert(Key::wifiSecurity, row[Key::wifiSecurity]);
        QCOMPARE(wireless(partial), wlan); // nothing else of it is touched
    }

    void reachesTheTargetOrFails_data() { Documents::addRows("upgrade-targets.json"); }
    void reachesTheTargetOrFails()
    {
        QFETCH(QJsonObject, row);
        QJsonObject document = row["document"].toObject();
        const ManagerOfTomorrow manager(row["target"].toInt());
        QCOMPARE(manager.upgradeConfiguration(document), row["reached"].toBool());
        QCOMPARE(Upgrades::statedVersion(document), row["version"].toInt());
    }
};

QTEST_APPLESS_MAIN(UpgradesTest)
#include "upgradestest.moc"
