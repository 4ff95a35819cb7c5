// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/remoteconfiguration.h"

#include "launcher/settingsapp.h"
#include "config/audiosettings.h"
#include "config/compatibility.h"
#include "config/configurationmanager.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "config/merge.h"
#include "config/secrets.h"
#include "device/commands.h"
#include "device/diagnostics.h"
#include "device/networkcontroller.h"
#include "device/resolutioncontainer.h"
#include "update/updatemodule.h"

#include <QApplication>
#include <QJsonDocument>
#include <QLoggingCategory>

#include <utility>

Q_LOGGING_CATEGORY(lcRemote, "kt.app.remote")

namespace {

constexpr int currentVersion = 15;

QJsonValue valueIn(const QJsonObject &root, QLatin1String section, QLatin1String key)
{
    return root.value(section).toObject().value(key);
}

QString resolutionIn(const QJsonObject &root)
{
    return valueIn(root, Key::display, Key::primary).toObject().value(Key::resolution).toString();
}

void setResolutionIn(QJsonObject &root, const QString &resolution)
{
    QJsonObject display = root.value(Key::display).toObject();
    QJsonObject primary = display.value(Key::primary).toObject();
    primary.insert(Key::resolution, resolution);
    display.insert(Key::primary, primary);
    root.insert(Key::display, display);
}

/// Which sound devices are used is this device's own affair; in which order they are preferred is not.
void keepSoundDevices(const QJsonObject &stored, QJsonObject &merged)
{
    const QJsonObject own = stored.value(Key::audio).toObject();
    QJsonObject audio = merged.value(Key::audio).toObject();
    for (const QLatin1String key :
         {Key::inputDevice, Key::outputDevice, Key::checkedInputDevice, Key::checkedOutputDevice}) {
        if (own.contains(key))
            audio.insert(key, own.value(key));
    }
    merged.insert(Key::audio, audio);
}

bool priorityDiffers(const QJsonObject &stored, const QJsonObject &merged)
{
    return valueIn(stored, Key::audio, Key::inputPriority) != valueIn(merged, Key::audio, Key::inputPriority)
        || valueIn(stored, Key::audio, Key::outputPriority)
        != valueIn(merged, Key::audio, Key::outputPriority);
}

} // namespace

RemoteConfiguration::RemoteConfiguration(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{ }

void RemoteConfiguration::mergeRemoteConfig(const QJsonObject &remote, int *result)
{
    m_parts.window.checkResetPossible(result);
    if (*result != 0)
        return;
    QJsonObject merged = m_parts.configuration.getDocument().object();
    qCDebug(lcRemote).noquote() << "merge:"
                                << QJsonDocument(Secrets::blanked(remote)).toJson(QJsonDocument::Compact);
    QJsonObject upgraded = remote;
    if (!ConfigurationManager(currentVersion).upgradeConfiguration(upgraded)) {
        Diagnostics::print(QStringLiteral("WRONG CONFIG"));
        *result = 1;
        return;
    }
    Merge::mergeJsonObject(merged, upgraded);
    if (!isAcceptable(upgraded, merged) || !saveRemoteConfig(merged))
        *result = 1;
}

bool RemoteConfiguration::isAcceptable(const QJsonObject &upgraded, const QJsonObject &merged) const
{
    const QJsonValue version = valueIn(upgraded, Key::firmwareInfo, Key::configurationVersion);
    if (!upgraded.contains(Key::firmwareInfo)
        || valueIn(merged, Key::firmwareInfo, Key::configurationVersion) != version) {
        Diagnostics::print(QStringLiteral("WRONG CONFIG"));
        return false;
    }
    if (!Compatibility::checkObjects(m_parts.configuration.getDocument().object(), merged)) {
        Diagnostics::print(QStringLiteral("WRONG COMPATIBILITY"));
        return false;
    }
    return true;
}

bool RemoteConfiguration::saveRemoteConfig(QJsonObject merged)
{
    Diagnostics::print(QStringLiteral("Save Configuration"));
    const bool inSession = m_parts.update.ifSessionConnected();
    const QJsonObject stored = m_parts.configuration.getDocument().object();
    if (std::exchange(m_postponedDone, false))
        m_postponed = Deferred();
    const Deferred before = m_postponed;
    defer(stored, merged);
    const JsonModule::Change change = m_parts.configuration.change([&merged](QJsonObject &root) {
        root = merged;
        return true;
    });
    if (change != JsonModule::Change::Written && change != JsonModule::Change::Unchanged) {
        m_postponed = before;
        return false;
    }
    followAtOnce(stored, merged);
    if (inSession)
        m_parts.window.postponeConfiguration();
    else
        showMerged();
    emit configurationMerged();
    return true;
}

/// Finds what has to wait, and puts what this device is to have of its own into the document.
void RemoteConfiguration::defer(const QJsonObject &stored, QJsonObject &merged)
{
    if (valueIn(stored, Key::general, Key::clientMode).toString() == QLatin1String("application"))
        m_postponed.clientSwitch = true;
    keepSoundDevices(stored, merged);
    if (resolutionIn(merged) != resolutionIn(stored)) {
        if (!m_parts.resolutions.isCheckedResolution(resolutionIn(merged)))
            setResolutionIn(merged, ResolutionContainer::automatic);
        m_postponed.resolutionChange = true;
        m_postponed.resolution = resolutionIn(merged);
    }
    if (merged.value(Key::network) != stored.value(Key::network))
        m_postponed.networkChange = true;
}

/// What disturbs nobody follows a merge at once.
void RemoteConfiguration::followAtOnce(const QJsonObject &stored, const QJsonObject &merged)
{
    if (valueIn(merged, Key::general, Key::deviceName) != valueIn(stored, Key::general, Key::deviceName))
        Commands::runShell(Commands::line(QStringLiteral("/usr/bin/kt-set-hostname"), QStringLiteral("-j")));
    const QJsonObject audio = merged.value(Key::audio).toObject();
    if (priorityDiffers(stored, merged))
        m_parts.window.audioActions().setPriorities(AudioSettings::priority(audio, AudioDirection::Output),
                                                    AudioSettings::priority(audio, AudioDirection::Input));
}

/// Nobody works on the remote desktop: the screen shows the new document at once.
void RemoteConfiguration::showMerged()
{
    emit pagesOutdated();
    m_parts.window.showLauncher();
    QApplication::closeAllWindows(); // the main window refuses
    if (m_postponed.resolutionChange) {
        m_pending.resolutionChange = true;
        m_pending.resolution = m_postponed.resolution;
    }
    m_pending.clientSwitch = m_pending.clientSwitch || m_postponed.clientSwitch;
    m_pending.networkChange = m_pending.networkChange || m_postponed.networkChange;
    m_postponed = Deferred();
}

void RemoteConfiguration::applyRemoteConfig()
{
    const Deferred pending = m_pending;
    m_pending = Deferred();
    carryOut(pending);
}

void RemoteConfiguration::handlePostponeConfiguration()
{
    m_postponedDone = true;
    carryOut(m_postponed);
    emit pagesOutdated();
    m_parts.window.showLauncher();
}

void RemoteConfiguration::carryOut(const Deferred &deferred)
{
    if (deferred.networkChange) {
        m_parts.network.setNetworkConfig();
        m_parts.network.autoconnect();
        m_parts.network.afterCommands(this, [this] { emit networkApplied(); });
    }
    if (deferred.resolutionChange && !deferred.resolution.isEmpty())
        m_parts.resolutions.setResolutionFromConsole(deferred.resolution);
    if (deferred.clientSwitch)
        Commands::runShell(Commands::line(QStringLiteral("/usr/bin/kt-switch"), QStringLiteral("-r")));
}
