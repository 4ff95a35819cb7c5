// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/defaults.h"
#include "config/jsonmodule.h"

#include <QObject>
#include <QVector>

#include <functional>

class NetworkController;
class SettingsApplier;

/// Makes the configuration document usable when the program starts.
///
/// An old document is upgraded at once. One that is of no use is replaced by the factory defaults, for which
/// the device's tools are asked. Until they have replied, the program works with provisional defaults in
/// memory.
class StartDocument : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(const QJsonObject &)>;

    /// All arguments outlive the object.
    StartDocument(JsonModule &configuration, NetworkController &network, SettingsApplier &applier,
                  QObject *parent = nullptr);

    /// Upgrades the document or begins to replace it. Something usable is held when this returns; the applier
    /// is started when the document is what it stays.
    void start();

    /// Upgrades the document on disk, where it is old.
    void checkConfigVersion();
    void upgradeConfigToNewNetwork();
    /// Also hands the upgraded network section to the device.
    void upgradeConfigToVer15();

    /// Gathers the complete factory document for this device.
    void loadDefaultConfig(const Done &done);
    /// Gathers the default "network settings" for what is connected now.
    void generateDefaultNetwork(const Done &done);

signals:
    /// The factory defaults are held, and on disk unless it is full.
    void replaced();
    /// The upgraded network section is in force on the device.
    void networkApplied();

private:
    void upgrade(const QVector<JsonModule::Edit> &steps);
    void applyNetwork();
    void replace(const QJsonObject &defaults);
    void readInterface(const QString &name, const std::function<void(const NetworkProperty *)> &done);
    void readWifi(Defaults::NetworkState state, const Done &done);

    JsonModule &m_configuration;
    NetworkController &m_network;
    SettingsApplier &m_applier;
};
