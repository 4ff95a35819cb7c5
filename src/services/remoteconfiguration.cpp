// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/remoteconfiguration.h"

#include "config/compatibility.h"
#include "config/configurationmanager.h"
#include "config/defaults.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "config/merge.h"
#include "config/secrets.h"
#include "device/diagnostics.h"

#include <QJsonDocument>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcRemote, "kt.services.remote")

namespace {

QJsonValue valueIn(const QJsonObject &root, QLatin1String section, QLatin1String key)
{
    return root.value(section).toObject().value(key);
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

} // namespace

RemoteConfiguration::RemoteConfiguration(JsonModule &configuration, const Guards &guards, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_guards(guards)
{ }

void RemoteConfiguration::mergeRemoteConfig(const QJsonObject &remote, int *result)
{
    *result = 1;
    if (m_guards.updating())
        return;
    qCDebug(lcRemote).noquote() << "merge:"
                                << QJsonDocument(Secrets::blanked(remote)).toJson(QJsonDocument::Compact);
    QJsonObject upgraded = remote;
    if (!ConfigurationManager(Defaults::configurationVersion).upgradeConfiguration(upgraded)) {
        Diagnostics::print(QStringLiteral("WRONG CONFIG"));
        return;
    }
    m_configuration.readAgain();
    QJsonObject merged = m_configuration.getDocument().object();
    Merge::mergeJsonObject(merged, upgraded);
    if (isAcceptable(upgraded, merged) && saveRemoteConfig(merged))
        *result = 0;
}

bool RemoteConfiguration::isAcceptable(const QJsonObject &upgraded, const QJsonObject &merged) const
{
    const QJsonValue version = valueIn(upgraded, Key::firmwareInfo, Key::configurationVersion);
    if (!upgraded.contains(Key::firmwareInfo)
        || valueIn(merged, Key::firmwareInfo, Key::configurationVersion) != version) {
        Diagnostics::print(QStringLiteral("WRONG CONFIG"));
        return false;
    }
    if (!Compatibility::checkObjects(m_configuration.getDocument().object(), merged)) {
        Diagnostics::print(QStringLiteral("WRONG COMPATIBILITY"));
        return false;
    }
    return true;
}

bool RemoteConfiguration::saveRemoteConfig(const QJsonObject &merged)
{
    Diagnostics::print(QStringLiteral("Save Configuration"));
    const JsonModule::Change change = m_configuration.change([&merged](QJsonObject &root) {
        QJsonObject wanted = merged;
        keepSoundDevices(root, wanted);
        root = wanted;
        return true;
    });
    if (change == JsonModule::Change::Unchanged)
        return true;
    if (change != JsonModule::Change::Written)
        return false;
    if (m_guards.inSession())
        emit screensPostponed();
    else
        emit screensOutdated();
    emit configurationMerged();
    return true;
}
