// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

/// Turns the management server's replies into requests to the device. It only emits signals, before each call
/// returns.
///
/// docs/management-protocol.md describes the messages. Invalid messages and unknown actions are ignored.
class MessageDispatcher : public QObject
{
    Q_OBJECT

public:
    MessageDispatcher() = default;
    explicit MessageDispatcher(const QString &) { }

    /// Executes a list of actions in order. A failed action does not stop the next ones.
    void extractAction(const QJsonArray &actions);
    void updateFirmware(const QString &url);
    /// Requests a reset if one is possible now.
    void rebootDevice();
    void saveConfiguration(const QJsonObject &configuration);

public slots:
    /// Handles the body of a reply. A configuration is merged only if `mergeAllowed`.
    void dispatch(const QByteArray &body, bool mergeAllowed);

signals:
    void firmwareUpdateURL(const QString &url, const QString &password, const QString &user,
                           const QString &file, int *result);
    void ask_resetDevice();
    void check_resetPossible(int *result);
    void mergeRemoteConfig(const QJsonObject &remote, int *result);
    void applyConfig();
    void getProfile();
    void getConfiguration();

private:
    void execute(const QJsonObject &action);

    QJsonObject m_message; ///< the last message
};
