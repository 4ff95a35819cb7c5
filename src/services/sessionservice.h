// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connectionfile.h"
#include "services/connecttarget.h"
#include "shared/childprocess.h"

#include <QObject>

class JsonModule;

/// The life of a remote-desktop session: the description is written, the client started, and at its end the
/// verdict read. A group's members are tried in their order until one lets the user in. At most one client
/// runs.
class SessionService : public QObject
{
    Q_OBJECT

public:
    /// The document outlives the object.
    explicit SessionService(JsonModule &configuration, QObject *parent = nullptr);
    ~SessionService() override;

    void setDualDisplay(bool inUse);
    bool isDualDisplay() const;
    bool isRunning() const;
    /// The last client could not be started.
    bool clientIsMissing() const;
    QString currentServerAddress() const;

    /// Connects to a server, or walks a group from its first member. A group without members is for the
    /// caller to refuse. Nothing happens while a client runs.
    void connectTo(const ConnectTarget &target);

    void createConnectionFile(const QString &address, bool autoDisconnect);
    /// Starts the client; `shown` is the name that `connecting` announces.
    void startConnection(const QString &shown);
    /// Starts the broker's client with these arguments, which hold a password and are never logged; `desktop`
    /// is what the connecting box names. Nothing happens while a client runs.
    void startBrokerClient(const QStringList &arguments, const QString &desktop);
    ConnectionFile::Verdict connectionError() const;

public slots:
    /// When the client ends the session is over, whatever members a group has left.
    void abandonWalk();

signals:
    /// A client is about to be started: the window makes way.
    void started();
    /// The client for this server or desktop is being started.
    void connecting(const QString &name);
    /// A client has ended. Another one may follow at once.
    void clientEnded();
    /// The session is over and no other member is tried.
    void ended(ConnectionFile::Verdict verdict);
    /// What only others know of a session: the stored proxy, the screens.
    void getProxyParameters(QJsonObject &proxy);
    void secondaryMonitorParameters(QString &resolution, int &atLeft, int &bottomAligned);
    void primaryScreenSize(QSize &size);

private:
    void connectionFinished(int exitCode, QProcess::ExitStatus status);
    void handleError(QProcess::ProcessError error);
    void launch(const QString &program, const QStringList &arguments, const QString &shown);
    void finish(ConnectionFile::Verdict verdict);
    void tryNextMember();
    void logOutput();
    void logLine();

    JsonModule &m_configuration;
    bool m_isDescribed = false; ///< the description is on the disk for the client
    ChildProcess m_client; ///< ends with the launcher, so that a restarted launcher has the screen to itself
    QVector<ServerEntry> m_group;
    int m_member = 0;
    bool m_running = false;
    bool m_dualDisplay = false;
    QString m_address;
};
