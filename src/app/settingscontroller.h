// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/audiosettings.h"
#include "config/jsonmodule.h"

#include <QJsonObject>
#include <QObject>

#include <memory>

class AudioController;
class NetworkController;
class NetworkStatus;
class RemoteConfiguration;
class ResolutionContainer;
class SettingsApp;
class SettingsApplier;
class SettingsPages;
class StartDocument;

/// Sees to the document at start, leads the user through the settings, and carries out the messages of device
/// scripts.
class SettingsController : public QObject
{
    Q_OBJECT

public:
    /// What the controller works with, beside the window. All outlive it.
    struct Parts
    {
        JsonModule &configuration;
        NetworkController &network;
        NetworkStatus &networkStatus;
        ResolutionContainer &resolutions;
        AudioController &audio;
        RemoteConfiguration &remote;
        SettingsApplier &applier;
        StartDocument &startDocument;
    };

    SettingsController(SettingsApp *window, const Parts &parts, QObject *parent = nullptr);
    ~SettingsController() override;

    /// Makes the document usable and fills the window with it.
    void start();

    /// Whether a document has the structure of the held one.
    bool checkConfigCompatibility(const QJsonObject &remote);
    /// The URL of the management server; "Unknown" without one.
    QString setQMDaddress();
    /// Puts the stored proxy in force for the whole program. True when it is another than before.
    bool setupProxy();

public slots:
    /// Fills the settings and shows them, behind the administrator password where one is set.
    void on_settingsButton_clicked();
    /// Applies the pages and returns to the launcher; stays when a page refuses.
    void on_applyButton_clicked();
    /// Returns to the launcher; asks first when changes would be lost.
    void on_backButton_clicked();
    /// Reads the message file that a device script has written and does what it says. A file that is missing
    /// or malformed changes nothing.
    void getRemoteMessage();
    /// The stored proxy, as the launcher asks for it.
    void fillProxyParameters(QJsonObject &proxy);
    /// The stored second display: `atLeft` and `bottomAligned` are 1 where its position says so, else 0.
    void fillSecondaryParameter(QString &resolution, int &atLeft, int &bottomAligned);
    /// Documents from afar, see `RemoteConfiguration`.
    void mergeRemoteConfig(const QJsonObject &remote, int *result);
    bool saveRemoteConfig(const QJsonObject &merged);
    /// Has the device follow the merged document.
    void applyRemoteConfig();
    /// A session has ended in which documents were merged: the screens show the new one, and the device
    /// follows.
    void handlePostponeConfiguration();
    /// Sets a resolution at once, without a question.
    void testResolutionFromConsole(const QString &size);
    /// Stores which device the sessions use and which one the user has chosen, and tells a running session.
    void setOutputAudio(const QString &name, const QString &number, const QString &checkedName,
                        const QString &checkedNumber);
    void setInputAudio(const QString &name, const QString &number, const QString &checkedName,
                       const QString &checkedNumber);

signals:
    /// The sound devices are to be read again.
    void audioRefreshRequested();
    /// The user has applied the settings.
    void settingsApplied();
    /// A second display has come or gone.
    void dualMonitorChanged(bool inUse);

private:
    void loadConfiguration();
    void showDocument();
    void showUnreadable();
    void connectWindow();
    void connectNetworkStatus();
    void connectAudio();
    void connectRemote();
    void followDocument();
    void prepareGUI();
    void showDocumentAnew();
    void showMerged();
    void storeAudio(AudioDirection direction, const AudioChoice &device, const AudioChoice &checked);
    SettingsPages &settingsPages();
    void leaveSettings();
    void takeMessage(const QJsonObject &message);

    SettingsApp *m_window;
    Parts m_parts;
    bool m_storingSound = false;
    QJsonObject m_sound;                    ///< the "audio settings" as the launcher was told them last
    std::unique_ptr<SettingsPages> m_pages; ///< built when the settings are first asked for
};
