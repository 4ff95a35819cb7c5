// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/countdown.h"

#include <QJsonObject>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <functional>

class UpdateModule;
class UpdatePage;

/// What the main window does for firmware updates: takes the requests of the settings page, the console and
/// the management server, shows the progress window, starts the installer, and returns from an update that
/// has failed. What is asked for during a session is done after it.
class UpdateLauncher : public QObject
{
    Q_OBJECT

public:
    /// How long the installer may take to restart the device before the launcher comes back.
    static constexpr int installerLimitMs = 600000;

    /// Both outlive it.
    UpdateLauncher(UpdatePage &page, UpdateModule &update, QObject *parent = nullptr);

    /// Starts the update that was asked for during the session that has ended, the last one of several. False
    /// when there was none. The updater is idle by then.
    bool replayPostponed();
    Countdown &countdown();
    void setInstallerLimit(int milliseconds);
    /// What is fetched for a URL, a user and a password. No scheme is FTP, no user is "anonymous".
    static QUrl address(const QString &url, const QString &user, const QString &password);

public slots:
    /// Each writes 0 when the update was started, 1 when another one runs or a session does, which the update
    /// then waits for.
    void on_updateLatest(int *result);
    void on_updateByURL(const QString &url, const QString &password, const QString &user, const QString &file,
                        int *result);
    void on_updateByCORVID(const QString &server, const QString &file, int *result);
    /// The update that the "firmware settings" ask for.
    void updateFirmware(const QJsonObject &settings);
    void updateFWProgresbar(const QString &what, qint64 received, qint64 total);
    /// The end of an update: empty when the image is in place.
    void downloadFWFinished(const QString &message);

signals:
    /// The progress window is to be shown, and nothing else to go on by itself.
    void windowRequested();
    /// The page that was shown before is to be shown again.
    void windowDone();
    /// An update waits for the session's end.
    void postponed();

private:
    /// Whether an update may start now; `again` is kept for the session's end when that is what it waits for.
    bool mayStart(const std::function<void()> &again);
    void openUpdateWindow(const QString &text);
    void runInstaller();
    void leave();

    UpdatePage &m_page;
    UpdateModule &m_update;
    Countdown m_countdown;
    QTimer m_installerTimer;
    std::function<void()> m_postponed;
};
