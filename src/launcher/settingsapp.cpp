// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"

#include "launcher/connectionpages.h"
#include "launcher/connector.h"
#include "launcher/enterkey.h"
#include "launcher/mainpages.h"
#include "launcher/powermenu.h"
#include "launcher/topbar.h"
#include "launcher/windowsettings.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "services/powerservice.h"
#include "services/updateservice.h"
#include "widgets/generaldialog.h"

#include "ui_settingsapp.h"

#include <QCloseEvent>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QVBoxLayout>

#include <utility>

Q_LOGGING_CATEGORY(lcLauncher, "kt.app.launcher")

SettingsApp::SettingsApp(const Parts &parts, QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::SettingsApp>())
    , m_parts(parts)
{
    m_ui->setupUi(this);
    setUpTopBar();
    setUpLauncher();
    setUpBroker();
    setUpPages();
    setUpSession();
    showClientMode(ClientMode::Corvid);
}

SettingsApp::~SettingsApp() = default;

void SettingsApp::setUpTopBar()
{
    m_topBar = std::make_unique<TopBar>(*m_ui);
    m_audio = std::make_unique<AudioActionController>(*m_ui->outputAudioButton, *m_ui->inputAudioButton);
    connect(m_ui->settingsButton, &QToolButton::clicked, this, [this] {
        m_autoStart->pause();
        emit settingsRequested();
    });
    m_powerMenu = std::make_unique<PowerMenu>(*m_ui, m_parts.power, *this);
}

void SettingsApp::setUpLauncher()
{
    connect(m_ui->corvidPage, &CorvidPage::refreshRequested, this, &SettingsApp::autoDetectServers);
    connect(m_ui->corvidPage, &CorvidPage::selectionChosen, this, [this](const QString &selection) {
        WindowSettings::store(&m_parts.configuration, Key::selection, selection);
    });
    connect(m_ui->autoConnectPage, &AutoConnectPage::connectRequested, this, &SettingsApp::autoConnect);
}

void SettingsApp::setUpSession()
{
    m_connector = std::make_unique<Connector>(m_parts.session, *m_ui->autoConnectPage, *this);
    connect(&m_parts.session, &SessionService::ended, this, &SettingsApp::connectionFinished);
}

void SettingsApp::setUpBroker()
{
    m_ui->autoLogonPage->renameParts(QStringLiteral("autoLogon"));
    m_broker = std::make_unique<BrokerLauncher>(
        BrokerLauncher::Parts{*m_ui->solvaPage, *m_ui->solvaDesktopsPage, *m_ui->autoLogonPage,
                              m_parts.session, m_parts.configuration});
    connect(m_broker.get(), &BrokerLauncher::busy, this, &SettingsApp::setBusy);
    m_autoStart = std::make_unique<AutoStart>(
        AutoStart::Parts{*m_ui->autoConnectPage, *m_ui->autoLogonPage, *m_broker});
    connect(m_broker.get(), &BrokerLauncher::loggedOut, this, [this] { m_pages->show(LauncherPage); });
    connect(m_broker.get(), &BrokerLauncher::desktopsReady, this, [this] {
        m_pages->show(DesktopsPage);
        m_ui->solvaDesktopsPage->focusList();
    });
    connect(m_broker.get(), &BrokerLauncher::failed, this, [this](const QString &message) {
        GeneralDialog::showError(this, tr("Connection Error"), message);
    });
}

void SettingsApp::setUpPages()
{
    m_connections = std::make_unique<ConnectionPages>(*m_ui, *m_autoStart);
    m_enterKey = std::make_unique<EnterKey>(*m_ui, *m_broker, *this);
    m_pages = std::make_unique<MainPages>(*m_ui, m_parts.updates, *m_autoStart);
    connect(m_pages.get(), &MainPages::updateClosing, this, &SettingsApp::applyPostponed);
}

QJsonObject SettingsApp::root() const
{
    return m_parts.configuration.getDocument().object();
}

void SettingsApp::loadConfiguration()
{
    loadServerGroups();
    m_connections->load(root());
    m_broker->loadConfiguration();
    m_topBar->showDeviceName(root().value(Key::general).toObject().value(Key::deviceName).toString());
    m_audio->setSettings(root().value(Key::audio).toObject());
    m_connections->updateConnectButton();
}

void SettingsApp::loadServerGroups()
{
    m_autoStart->load(root());
    m_ui->corvidPage->setGroups(root().value(Key::serverGroups).toArray());
}

QString SettingsApp::storedMode() const
{
    return root().value(Key::general).toObject().value(Key::clientMode).toString();
}

void SettingsApp::openLauncher(const QString &clientMode)
{
    showClientMode(clientMode);
    m_pages->showLauncher(m_autoStart->due(clientMode));
    focusMode();
    autoDetectServers();
}

void SettingsApp::showLauncher()
{
    const AutoStart::Kind kind = m_autoStart->due(storedMode());
    if (kind != AutoStart::Kind::None)
        showClientMode(storedMode());
    m_pages->showLauncher(kind);
}

void SettingsApp::resumeAutomatic()
{
    m_autoStart->resume();
}

void SettingsApp::setSettingsView(QWidget *view)
{
    auto *layout = new QVBoxLayout(m_ui->settingsPage);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
}

void SettingsApp::showSettings()
{
    m_pages->show(SettingsPage);
}

void SettingsApp::showClientMode(const QString &clientMode)
{
    showClientMode(ConnectionPages::modeOf(clientMode));
}

SettingsApp::ClientMode SettingsApp::clientMode() const
{
    return m_connections->mode();
}

SessionService &SettingsApp::session()
{
    return m_parts.session;
}

void SettingsApp::postponeConfiguration()
{
    m_configurationPostponed = true;
    m_parts.session.abandonWalk();
}

TopBar &SettingsApp::topBar()
{
    return *m_topBar;
}

AudioActionController &SettingsApp::audioActions()
{
    return *m_audio;
}

void SettingsApp::showClientMode(ClientMode mode)
{
    if (!m_connections->show(mode))
        return;
    m_broker->cancelLogon();
    if (m_pages->current() != SettingsPage)
        m_pages->show(LauncherPage);
    focusMode();
    emit clientModeChanged(mode);
}

/// What is not shown never gets the focus.
void SettingsApp::focusMode()
{
    if (m_pages->current() == LauncherPage)
        m_connections->focusFirst();
}

/// From a countdown or the desktops, the button of the mode that is shown leads back to the mode's page. A
/// user who presses one during a countdown does not want what it counts for.
void SettingsApp::chooseClientMode(ClientMode mode)
{
    const int page = m_pages->current();
    if (page == AutoConnectPage || page == AutoLogonPage)
        m_autoStart->cancel();
    if (mode == clientMode())
        m_pages->show(LauncherPage);
    showClientMode(mode);
}

void SettingsApp::on_CorvidProButton_clicked()
{
    chooseClientMode(ClientMode::Corvid);
}

void SettingsApp::on_solvaVDIButton_clicked()
{
    chooseClientMode(ClientMode::Solva);
}

void SettingsApp::on_rdpClientButton_clicked()
{
    chooseClientMode(ClientMode::Rdp);
}

void SettingsApp::on_connectButton_clicked()
{
    const auto target = m_connections->target();
    if (target && m_parts.updates.isIdle())
        m_connector->connectTo(*target);
}

void SettingsApp::autoConnect()
{
    if (m_autoStart->target().isComplete())
        return on_connectButton_clicked();
    m_pages->show(LauncherPage);
    m_connector->showMissingAddress(m_autoStart->target());
}

void SettingsApp::connectionFinished(ConnectionFile::Verdict verdict)
{
    m_autoStart->forgetCancel();
    if (!m_parts.updates.isIdle() || applyPostponed())
        return;
    const ClientMode mode = clientMode();
    // The countdown runs behind the error, which nobody may be there to close.
    if (m_autoStart->due(storedMode()) == AutoStart::Kind::Connect)
        showLauncher();
    if (mode == ClientMode::Corvid && verdict == ConnectionFile::Verdict::NoError)
        updateManualServers();
    m_connector->explain(verdict);
}

/// An update that was asked for in the same session comes first; this follows when it has failed.
bool SettingsApp::applyPostponed()
{
    if (!std::exchange(m_configurationPostponed, false))
        return false;
    emit handlePostponeConfiguration();
    return true;
}

void SettingsApp::showConnectionError()
{
    m_connector->showConnectionError();
}

void SettingsApp::on_mainStackedWidget_currentChanged(int index)
{
    // On the settings pages Enter belongs to the fields.
    m_enterKey->setEnabled(index != SettingsPage && index != UpdatePage);
    m_pages->handleShown();
    if (index == LauncherPage)
        focusMode();
}

void SettingsApp::updateManualServers()
{
    m_ui->corvidPage->setHistory(WindowSettings::addToHistory(
        &m_parts.configuration, Key::manualServerHistory, m_parts.session.currentServerAddress()));
}

void SettingsApp::refreshServerGroups()
{
    m_parts.configuration.readAgain();
    loadServerGroups();
    autoDetectServers();
}

void SettingsApp::autoDetectServers()
{
    const QJsonObject connection = root().value(Key::connection).toObject();
    if (!connection.value(Key::corvidConnection).toObject().value(Key::showAutodetected).toBool())
        return;
    m_ui->corvidPage->autoDetectServers();
    int error = 0;
    emit refreshServerList(error);
}

void SettingsApp::setServerList(const QMap<QString, QHostAddress> &servers)
{
    qCInfo(lcLauncher) << servers.size() << "servers found";
    m_ui->corvidPage->setServerList(servers);
    emit passServerList(servers);
}

void SettingsApp::setBusy(bool busy)
{
    if (busy)
        setCursor(Qt::WaitCursor);
    else
        unsetCursor();
}

void SettingsApp::showProgress(bool busy)
{
    m_topBar->showProgress(busy);
}

void SettingsApp::setDualDisplay(bool inUse)
{
    m_parts.session.setDualDisplay(inUse);
    m_broker->setDualDisplay(inUse);
    emit dualDisplayChanged(inUse);
}

void SettingsApp::checkResetPossible(int *result) const
{
    m_parts.power.checkResetPossible(result);
}

void SettingsApp::resetDevice()
{
    m_parts.power.resetDevice();
}

void SettingsApp::updateFirmware()
{
    m_parts.updates.updateFirmware(root().value(Key::firmware).toObject());
}

void SettingsApp::on_updateLatest(int *result)
{
    m_parts.updates.on_updateLatest(result);
}

void SettingsApp::on_updateByURL(const QString &url, const QString &password, const QString &user,
                                 const QString &file, int *result)
{
    m_parts.updates.on_updateByURL(url, password, user, file, result);
}

void SettingsApp::on_updateByCORVID(const QString &server, const QString &file, int *result)
{
    m_parts.updates.on_updateByCORVID(server, file, result);
}

void SettingsApp::on_powerButton_clicked()
{
    m_powerMenu->open();
}

void SettingsApp::on_actionShutdown_triggered()
{
    m_powerMenu->shutDown();
}

void SettingsApp::on_actionReboot_triggered()
{
    m_powerMenu->reboot();
}

void SettingsApp::on_actionSleep_triggered()
{
    m_powerMenu->sleep();
}

void SettingsApp::closeEvent(QCloseEvent *event)
{
    event->ignore();
}
