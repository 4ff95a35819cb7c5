// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

class JsonModule;
class SettingsApp;

/// Tells the window's device agent what the configuration document says of its server, and the document
/// itself, and has it connect: once the window has been painted or should have been, after an apply, after a
/// merge from afar that has changed something, and when DHCP offers another server.
///
/// The agent asks the device's tools when it connects. Therefore nothing is done before the event loop has
/// the turn again.
class AgentFeed : public QObject
{
    Q_OBJECT

public:
    /// The window and the document outlive the object.
    AgentFeed(SettingsApp &window, JsonModule &configuration, QObject *parent = nullptr);

public slots:
    /// The user has applied the settings: the server gets them in any case.
    void takeApplied();
    void takeMerged();
    /// A network that has come up may have brought the server's address.
    void takeNetworkStatus();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void feed();
    QJsonObject management() const;
    QString url() const;
    QByteArray text() const;

    SettingsApp &m_window;
    JsonModule &m_configuration;
    QTimer m_turn;
    bool m_applied = false;
    QByteArray m_fed;
    QString m_url; ///< empty before the first time
};
