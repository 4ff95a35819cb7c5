// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>

#include <map>

/// Brings a document that came from afar up to a version of the schema, step by step.
class ConfigurationManager
{
public:
    explicit ConfigurationManager(int targetVersion);
    virtual ~ConfigurationManager();

    /// Upgrades the object in place; one of the target version, or above it, stays as it is. False when there
    /// is no way to the target, as from versions below 14: the object is then not to be used.
    bool upgradeConfiguration(QJsonObject &object) const;

    static void upgradeFrom_14_To_15(QJsonObject &object);

protected:
    using Step = void (*)(QJsonObject &);
    /// `step` raises a document of `version`.
    void addStep(int version, Step step);

private:
    int m_targetVersion;
    std::map<int, Step> m_upgradeSteps;
};
