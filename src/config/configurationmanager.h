// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>

#include <map>

/// Upgrades a remote document to a version of the schema, step by step.
class ConfigurationManager
{
public:
    explicit ConfigurationManager(int targetVersion);
    virtual ~ConfigurationManager();

    /// Upgrades the object in place; an object of the target version or above stays unchanged. False if there
    /// is no upgrade to the target, as for versions below 14; do not use the object then.
    bool upgradeConfiguration(QJsonObject &object) const;

    static void upgradeFrom_14_To_15(QJsonObject &object);

protected:
    using Step = void (*)(QJsonObject &);
    /// `step` upgrades a document of `version`.
    void addStep(int version, Step step);

private:
    int m_targetVersion;
    std::map<int, Step> m_upgradeSteps;
};
