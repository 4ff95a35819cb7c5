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
/// An old document is upgraded at once. One that the system cannot read now is tried again;
/// meanwhile, and for good after some seconds, the program works with defaults that are never written, and
/// the device follows nothing. One that is of no use is replaced by the factory defaults, for which the
/// device's tools are asked. Until they have replied, the program works with provisional defaults in memory.
class StartDocument : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(const QJsonObject &)>;
    /// A document that cannot be read is tried again this often, with this pause.
    static constexpr int readTries = 20;
    static constexpr int readPauseMs = 250;

    /// All arguments outlive the object.
    StartDocument(JsonModule &configuration, NetworkController &network, SettingsApplier &applier,
                  QObject *parent = nullptr);

    /// Upgrades the document, begins to replace it, or to try again to read it. Something usable is held when
    /// this returns; the applier is started when the document is what it stays.
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
    /// Another document is held: the factory defaults, on disk unless it is full, or one that could be read
    /// after all.
    void replaced();
    /// The document cannot be read, and the program goes on without it.
    void unreadable();
    /// The upgraded network section is in force on the device.
    void networkApplied();

private:
    void begin(JsonModule::Condition condition);
    void readLater();
    void upgrade(const QVector<JsonModule::Edit> &steps);
    void applyNetwork();
    void replace(const QJsonObject &defaults);
    void readInterface(const QString &name, const std::function<void(const NetworkProperty *)> &done);
    void readWifi(const Defaults::NetworkState &state, const Done &done);

    QJsonObject m_provisional; ///< held until the tools have replied
    JsonModule &m_configuration;
    NetworkController &m_network;
    SettingsApplier &m_applier;
    int m_triesLeft;
};
