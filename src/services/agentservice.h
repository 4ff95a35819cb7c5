// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

#include <memory>

class DeviceAgent;
class DeviceStatus;
class JsonModule;
class MessageDispatcher;

/// Owns the agent of the management server: tells it what the document says of the server, and the document
/// itself, has it connect, and passes on what the server requests. The agent connects once the window has
/// been painted or should have been, after an apply, after a merge that has changed something, and when DHCP
/// offers another server.
///
/// The agent asks the device's tools when it connects. Therefore nothing is done before the event loop has
/// the turn again.
class AgentService : public QObject
{
    Q_OBJECT

public:
    /// The document and the status outlive the object.
    AgentService(JsonModule &configuration, DeviceStatus &status, QObject *parent = nullptr);
    ~AgentService() override;

    /// Waits for the first paint.
    void start();
    /// Made when it is first asked for: the first paint does not wait for the TLS library.
    DeviceAgent &agent();

public slots:
    void handleFirstPaint();
    /// The user has applied the settings: the server gets them in any case.
    void handleApplied();
    void handleMerged();
    /// A network that has come up may have brought the server's address.
    void handleNetworkStatus();

signals:
    /// What the server requests. The receivers set `result` before the emit returns; 0 means accepted.
    void firmwareUpdateURL(const QString &url, const QString &password, const QString &user,
                           const QString &file, int *result);
    void check_resetPossible(int *result);
    /// Several requests of one list cause one reset.
    void ask_resetDevice();
    void mergeRemoteConfig(const QJsonObject &remote, int *result);
    void applyConfig();

private:
    void feed();
    void connectDispatcher(MessageDispatcher &dispatcher);
    void reset();
    QJsonObject management() const;
    QString url() const;
    QByteArray text() const;

    JsonModule &m_configuration;
    DeviceStatus &m_status;
    std::unique_ptr<DeviceAgent> m_agent;
    QTimer m_turn;
    bool m_applied = false;
    bool m_resetRequested = false;
    QByteArray m_fed;
    QString m_url; ///< empty before the first time
};
