// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/configurationmanager.h"

#include "config/upgrades.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcUpgrade, "kt.config.upgrade")

ConfigurationManager::ConfigurationManager(int targetVersion)
    : m_targetVersion(targetVersion)
{
    addStep(14, upgradeFrom_14_To_15);
}

ConfigurationManager::~ConfigurationManager() = default;

void ConfigurationManager::addStep(int version, Step step)
{
    m_upgradeSteps[version] = step;
}

bool ConfigurationManager::upgradeConfiguration(QJsonObject &object) const
{
    int version = Upgrades::statedVersion(object);
    while (version < m_targetVersion) {
        const auto step = m_upgradeSteps.find(version);
        if (step == m_upgradeSteps.end()) {
            qCWarning(lcUpgrade) << "no upgrade from version" << version;
            return false;
        }
        step->second(object);
        const int reached = Upgrades::statedVersion(object);
        if (reached <= version) {
            qCCritical(lcUpgrade) << "the upgrade from version" << version << "gave version" << reached;
            return false;
        }
        version = reached;
    }
    return true;
}

void ConfigurationManager::upgradeFrom_14_To_15(QJsonObject &object)
{
    Upgrades::partialToVersion15(object);
}
