// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/startdocument.h"

#include "config/upgrades.h"
#include "device/devicetools.h"
#include "device/diagnostics.h"
#include "device/networkcontroller.h"
#include "services/settingsapplier.h"

#include <QLoggingCategory>
#include <QNetworkInterface>
#include <QSysInfo>
#include <QTimer>

Q_LOGGING_CATEGORY(lcStart, "kt.services.start")

namespace {

const QString eth0 = QStringLiteral("eth0");
const QString wlan0 = QStringLiteral("wlan0");

bool upgradeNetwork(QJsonObject &root)
{
    if (!Upgrades::hasOldNetwork(root))
        return false;
    Diagnostics::print(QStringLiteral("UPGRADE TO NEW NETWORK"));
    Upgrades::toNewNetwork(root);
    return true;
}

bool upgradeToVersion15(QJsonObject &root)
{
    if (Upgrades::effectiveVersion(root) > Upgrades::oldestVersion) {
        Diagnostics::print(QStringLiteral("UPGRADE TO 15 SKIPPED"));
        return false;
    }
    Diagnostics::print(QStringLiteral("UPGRADE TO 15 STARTED"));
    Upgrades::toVersion15(root);
    return true;
}

} // namespace

StartDocument::StartDocument(JsonModule &configuration, NetworkController &network, SettingsApplier &applier,
                             QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_network(network)
    , m_applier(applier)
    , m_triesLeft(readTries)
{ }

void StartDocument::start()
{
    begin(m_configuration.load());
}

void StartDocument::begin(JsonModule::Condition condition)
{
    if (condition == JsonModule::Condition::Usable) {
        checkConfigVersion();
        m_applier.start();
        return;
    }
    m_provisional = Defaults::document(QSysInfo::machineHostName(), Defaults::networkSettings({}));
    if (condition == JsonModule::Condition::Unreadable) {
        m_configuration.holdProvisionally(m_provisional);
        readLater();
        return;
    }
    m_configuration.hold(m_provisional);
    loadDefaultConfig([this](const QJsonObject &defaults) { replace(defaults); });
}

/// The cause may pass: too many open files, or no memory.
void StartDocument::readLater()
{
    QTimer::singleShot(readPauseMs, this, [this] {
        const JsonModule::Condition condition = m_configuration.load();
        if (condition != JsonModule::Condition::Unreadable) {
            begin(condition);
            emit replaced();
        } else if (--m_triesLeft > 0) {
            readLater();
        } else {
            qCCritical(lcStart)
                << "the document cannot be read: the program goes on with defaults and writes nothing";
            emit unreadable();
        }
    });
}

/// What has been changed meanwhile stays.
void StartDocument::replace(const QJsonObject &defaults)
{
    QJsonObject complete = m_configuration.getDocument().object();
    for (auto section = defaults.begin(); section != defaults.end(); ++section) {
        if (complete.value(section.key()) == m_provisional.value(section.key()))
            complete.insert(section.key(), section.value());
    }
    m_configuration.getParameters(complete);
    m_configuration.isConfigCorrect();
    // The host name was reset by its own tool.
    m_applier.acknowledge(SettingsApplier::Section::HostName);
    m_applier.start();
    emit replaced();
}

void StartDocument::checkConfigVersion()
{
    upgrade({upgradeNetwork, upgradeToVersion15});
}

void StartDocument::upgradeConfigToNewNetwork()
{
    upgrade({upgradeNetwork});
}

void StartDocument::upgradeConfigToVer15()
{
    upgrade({upgradeToVersion15});
}

/// Takes the document through the steps in one change. Where it cannot be written, what was read is of no
/// use: the upgraded document is held.
void StartDocument::upgrade(const QVector<JsonModule::Edit> &steps)
{
    bool newVersion = false;
    const auto edit = [&](QJsonObject &root) {
        const int before = Upgrades::effectiveVersion(root);
        bool edited = false;
        for (const JsonModule::Edit &step : steps)
            edited = step(root) || edited;
        newVersion = Upgrades::effectiveVersion(root) != before;
        return edited;
    };
    m_configuration.change(edit, JsonModule::OnFailure::Hold);
    if (newVersion)
        applyNetwork();
}

void StartDocument::applyNetwork()
{
    using Section = SettingsApplier::Section;
    m_network.setNetworkConfig();
    m_network.autoconnect();
    m_network.afterCommands(this, [this] { emit networkApplied(); });
    m_applier.acknowledge(Section::Network | Section::Wired | Section::Wireless | Section::Dns);
}

void StartDocument::loadDefaultConfig(const Done &done)
{
    ToolRun::start(DeviceTools::hostName(), this, [this, done](const ToolResult &result) {
        const QString name = QString::fromLocal8Bit(result.output).remove(QLatin1Char('\n'));
        qCDebug(lcStart) << name;
        generateDefaultNetwork(
            [name, done](const QJsonObject &network) { done(Defaults::document(name, network)); });
    });
}

void StartDocument::generateDefaultNetwork(const Done &done)
{
    readInterface(eth0, [this, done](const NetworkProperty *wired) {
        Defaults::NetworkState state;
        state.wiredPresent = wired;
        if (wired)
            state.wired = *wired;
        readInterface(wlan0, [this, done, state](const NetworkProperty *wireless) {
            Defaults::NetworkState both = state;
            both.wirelessPresent = wireless;
            if (!wireless)
                return done(Defaults::networkSettings(both));
            both.wireless = *wireless;
            readWifi(both, done);
        });
    });
}

/// Calls `done` with nothing when the machine has no such interface.
void StartDocument::readInterface(const QString &name,
                                  const std::function<void(const NetworkProperty *)> &done)
{
    if (!QNetworkInterface::interfaceFromName(name).isValid()) {
        QTimer::singleShot(0, this, [done] { done(nullptr); });
        return;
    }
    m_network.getNetworkByInterface(name, this,
                                    [done](bool, const NetworkProperty &property) { done(&property); });
}

void StartDocument::readWifi(const Defaults::NetworkState &state, const Done &done)
{
    m_network.GetWifiNetworkList(this, [this, state, done](const QList<WifiItem> &scan) {
        Defaults::NetworkState scanned = state;
        scanned.scan = scan;
        m_network.getActualWifi(this, [scanned, done](bool, const NetworkProperty &accessPoint) {
            Defaults::NetworkState complete = scanned;
            complete.wireless.setEssid(accessPoint.essid());
            complete.wireless.setSignalQuality(accessPoint.signalQuality());
            done(Defaults::networkSettings(complete));
        });
    });
}
