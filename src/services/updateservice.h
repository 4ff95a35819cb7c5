// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/countdown.h"

#include <QJsonObject>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <functional>

class SessionService;
class TerminalServerModule;
struct ToolResult;
class UpdateModule;

/// The course of firmware updates: takes the requests of the settings page, the console and the management
/// server, runs the updater and the installer, and ends an update that has failed. An update and a session
/// exclude each other: a request during a session is carried out after it.
class UpdateService : public QObject
{
    Q_OBJECT

public:
    /// How long the installer may take before the user gets the power menu back.
    static constexpr int installerLimitMs = 30 * 60 * 1000;
    /// How long the device may go on after an installer that has ended well.
    static constexpr int restartLimitMs = 60 * 1000;

    /// Connects the updater to the endpoint, whose socket it uses, and to the sessions. All outlive the
    /// object.
    UpdateService(UpdateModule &update, TerminalServerModule &endpoint, SessionService &session,
                  QObject *parent = nullptr);

    /// Neither an update nor a session is in progress.
    bool isIdle() const;
    Countdown &countdown();
    void setInstallerLimit(int milliseconds);
    /// What is fetched for a URL, a user and a password. No scheme means FTP, no user means "anonymous".
    static QUrl address(const QString &url, const QString &user, const QString &password);

public slots:
    /// Each writes 0 when the update was started, 1 when another one is in progress, or a session, which the
    /// update then waits for.
    void on_updateLatest(int *result);
    void on_updateByURL(const QString &url, const QString &password, const QString &user, const QString &file,
                        int *result);
    void on_updateByCORVID(const QString &server, const QString &file, int *result);
    /// The update that the "firmware settings" ask for.
    void updateFirmware(const QJsonObject &settings);
    /// The end of an update: empty when the image is in place.
    void downloadFWFinished(const QString &message);

signals:
    /// An update begins with this text: nothing else may start by itself.
    void opened(const QString &text);
    /// Both numbers are -1 while the progress is unknown.
    void progress(const QString &what, qint64 received, qint64 total);
    void installing(const QString &text);
    /// The installer writes, and whoever switches the device off now breaks it; or that is no longer so.
    void powerLocked(bool locked);
    void failed(const QString &message);
    /// The seconds until a failed update is closed.
    void remaining(int seconds);
    /// The update is over and the device has not restarted.
    void closed();

private:
    /// Whether an update may start now; `again` is kept for the session's end when that is what it waits for.
    bool mayStart(const std::function<void()> &again);
    void handleSessionEnd();
    void setUpTimers();
    void runInstaller();
    void handleInstallerEnd(const ToolResult &result);
    void fail(const QString &message);
    void close();

    UpdateModule &m_update;
    SessionService &m_session;
    Countdown m_countdown;
    QTimer m_installerTimer;
    QTimer m_restartTimer;
    std::function<void()> m_postponed;
};
