// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

/// Turns what the management server answers into requests to the device. It does nothing itself: every effect
/// leaves as a signal, before the call returns.
///
/// docs/management-protocol.md describes the messages. What is no message, or asks for something unknown,
/// does nothing.
class MessageDispatcher : public QObject
{
    Q_OBJECT

public:
    MessageDispatcher() = default;
    explicit MessageDispatcher(const QString &) { }

    /// Carries out a list of actions in their order, each of them whatever becomes of the others.
    void extractAction(const QJsonArray &actions);
    void updateFirmware(const QString &url);
    /// Asks for a reset where one is possible now.
    void rebootDevice();
    void saveConfiguration(const QJsonObject &configuration);

public slots:
    /// Does what the body of an answer says. A configuration is merged only where the answer may hold one.
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
    void carryOut(const QJsonObject &action);

    QJsonObject m_message; ///< the last one
};
