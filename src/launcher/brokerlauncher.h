// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "broker/solvaaccessmanager.h"

#include <QJsonObject>
#include <QObject>

class AutoConnectPage;
class JsonModule;
class SessionService;
class SolvaDesktopsPage;
class SolvaPage;

/// The way from a broker's log-on to a desktop: signs in with what the user typed or the administrator
/// stored, shows the desktops that the broker offers, and starts the broker's client for the one chosen.
class BrokerLauncher : public QObject
{
    Q_OBJECT

public:
    /// The pages between which it leads, what runs the client, and the document. All outlive it.
    struct Parts
    {
        SolvaPage &logon;
        SolvaDesktopsPage &desktops;
        AutoConnectPage &autoLogon;
        SessionService &session;
        JsonModule &configuration;
    };

    explicit BrokerLauncher(const Parts &parts, QObject *parent = nullptr);

    /// Takes the broker, the log-on and the session's options from the held document.
    void loadConfiguration();
    /// The device signs in by itself: it is told to, and a broker and a user are stored.
    bool autoLogonEnabled() const;
    /// Counts down on the auto-logon page, and then signs in.
    void startSolvaAutoLogon();
    void setDualDisplay(bool inUse);
    /// Ends a log-on under way: the user has turned to something else, and nobody waits for its outcome.
    void cancelLogon();

public slots:
    void on_loginSolvaButton_clicked();
    void on_connectSolvaButton_clicked();
    void on_logoutSolvaButton_clicked();
    /// The outcome of a log-on.
    void solvaReply(const QString &reply);

signals:
    /// The broker is being asked.
    void busy(bool busy);
    /// The desktops are there to be shown.
    void desktopsReady();
    /// The user is signed out: the launcher is to be shown.
    void loggedOut();
    /// The text of an error for the user.
    void failed(const QString &message);

private:
    QJsonObject section(QLatin1String key) const;
    QJsonObject settings() const;
    QString storedBroker() const;
    void setSolvaDefaultProtocol();
    void startSolvaConnection();
    bool complain();
    /// Auto-logon is configured, and the user has typed no other log-on.
    bool usesStoredLogon() const;
    void logOn(bool stored);
    void setBusy(bool asking);

    Parts m_parts;
    SolvaAccessManager m_manager;
};
