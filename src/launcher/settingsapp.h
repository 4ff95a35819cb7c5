// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "launcher/audioactioncontroller.h"
#include "launcher/autostart.h"
#include "launcher/brokerlauncher.h"
#include "services/sessionservice.h"

#include <QHostAddress>
#include <QMainWindow>
#include <QMap>

#include <memory>

class ConnectionPages;
class Connector;
class EnterKey;
class JsonModule;
class MainPages;
class PowerMenu;
class PowerService;
class TopBar;
class UpdateService;

namespace Ui {
class SettingsApp;
}

/// The main window: the launcher that the device's user meets, and the pages around it.
///
/// It shows what its services report, and reports what its user wants. It owns none of them, and knows
/// nothing of the settings controller, which is handed the window.
class SettingsApp : public QMainWindow
{
    Q_OBJECT

public:
    /// The launcher's connection pages, in the order of their stack; the words of "client mode" in the
    /// document.
    enum class ClientMode { Corvid = 0, Solva = 1, Rdp = 2 };

    /// The pages of the main stack.
    enum Page {
        LauncherPage = 0,
        SettingsPage = 1,
        AutoConnectPage = 2,
        UpdatePage = 3,
        DesktopsPage = 4,
        AutoLogonPage = 5,
    };

    /// What the window shows and asks of the program. All outlive it.
    struct Parts
    {
        JsonModule &configuration;
        SessionService &session;
        UpdateService &updates;
        PowerService &power;
    };

    explicit SettingsApp(const Parts &parts, QWidget *parent = nullptr);
    ~SettingsApp() override;

    /// Fills the launcher from the held document: groups, histories, addresses, what the user may do.
    void loadConfiguration();
    /// Takes the settings view into the main stack.
    void setSettingsView(QWidget *view);
    void showSettings();
    /// Shows the launcher. A device that connects or signs in by itself counts down again, unless its user
    /// has cancelled.
    void showLauncher();
    /// The settings have not been opened: the countdown that was held for them goes on.
    void resumeAutomatic();
    /// Shows the connection page of a "client mode" word, and the page that the window opens on.
    void openLauncher(const QString &clientMode);
    /// Shows the connection page of a "client mode" word.
    void showClientMode(const QString &clientMode);
    ClientMode clientMode() const;
    SessionService &session();
    /// A document has been merged during a session: when the client ends, that session is over and the rest
    /// of the document is applied.
    void postponeConfiguration();
    TopBar &topBar();
    AudioActionController &audioActions();

public slots:
    /// Writes 0 when a reset may go ahead, 1 while a firmware update is in progress.
    void checkResetPossible(int *result) const;
    void resetDevice();
    /// The update of the firmware settings, as they are stored.
    void updateFirmware();
    /// The firmware updates that a console or the management server asks for. Each writes 0 when the update
    /// was started and 1 when it was not; what is asked for during a session is done after it.
    void on_updateLatest(int *result);
    void on_updateByURL(const QString &url, const QString &password, const QString &user, const QString &file,
                        int *result);
    void on_updateByCORVID(const QString &server, const QString &file, int *result);
    void setBusy(bool busy);
    /// The settings are being applied, or no longer.
    void showProgress(bool busy);
    void setDualDisplay(bool inUse);
    /// Reads the groups from the file again, and searches for servers anew.
    void refreshServerGroups();
    /// Searches the subnet for Corvid servers, where the document says so.
    void autoDetectServers();
    void setServerList(const QMap<QString, QHostAddress> &servers);
    void showConnectionError();

    void on_CorvidProButton_clicked();
    void on_solvaVDIButton_clicked();
    void on_rdpClientButton_clicked();
    void on_connectButton_clicked();
    void on_mainStackedWidget_currentChanged(int index);
    void on_powerButton_clicked();
    void on_actionShutdown_triggered();
    void on_actionReboot_triggered();
    void on_actionSleep_triggered();

signals:
    /// A discovery is asked for; `error` becomes 1 when it could not be started everywhere.
    void refreshServerList(int &error);
    /// What was merged during the session that has ended is to be applied.
    void handlePostponeConfiguration();
    void dualDisplayChanged(bool inUse);
    /// The user wants to see the settings.
    void settingsRequested();
    /// The servers that a discovery has found.
    void passServerList(const QMap<QString, QHostAddress> &servers);
    /// Only a Corvid client has server groups to set up.
    void clientModeChanged(ClientMode mode);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void setUpTopBar();
    void loadServerGroups();
    QString storedMode() const;
    void setUpLauncher();
    void setUpSession();
    void setUpBroker();
    void setUpPages();
    void showClientMode(ClientMode mode);
    void focusMode();
    void chooseClientMode(ClientMode mode);
    void autoConnect();
    void connectionFinished(ConnectionFile::Verdict verdict);
    bool applyPostponed();
    void updateManualServers();
    QJsonObject root() const;

    std::unique_ptr<Ui::SettingsApp> m_ui;
    Parts m_parts;
    std::unique_ptr<BrokerLauncher> m_broker;
    std::unique_ptr<AutoStart> m_autoStart;
    std::unique_ptr<TopBar> m_topBar;
    std::unique_ptr<AudioActionController> m_audio;
    std::unique_ptr<ConnectionPages> m_connections;
    std::unique_ptr<MainPages> m_pages;
    std::unique_ptr<EnterKey> m_enterKey;
    std::unique_ptr<PowerMenu> m_powerMenu;
    std::unique_ptr<Connector> m_connector;
    bool m_configurationPostponed = false;
};
