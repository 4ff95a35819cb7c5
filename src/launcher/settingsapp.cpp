// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/settingsapp.h"

#include "launcher/popups.h"
#include "launcher/stylesheets.h"
#include "launcher/topbar.h"
#include "launcher/windowsettings.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "services/powerservice.h"
#include "widgets/generaldialog.h"

#include "ui_settingsapp.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

Q_LOGGING_CATEGORY(lcLauncher, "kt.app.launcher")

namespace {

const QPoint powerMenuOffset(-80, 38);

SettingsApp::ClientMode modeOf(const QString &word)
{
    if (word == QLatin1String("solva"))
        return SettingsApp::ClientMode::Solva;
    return word == QLatin1String("rdp") ? SettingsApp::ClientMode::Rdp : SettingsApp::ClientMode::Corvid;
}

} // namespace

SettingsApp::SettingsApp(const Parts &parts, QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::SettingsApp>())
    , m_parts(parts)
{
    m_ui->setupUi(this);
    setUpTopBar();
    setUpLauncher();
    setUpSession();
    setUpBroker();
    setUpUpdate();
    showClientMode(ClientMode::Corvid);
}

SettingsApp::~SettingsApp() = default;

void SettingsApp::setUpTopBar()
{
    m_topBar = std::make_unique<TopBar>(*m_ui);
    m_audio = std::make_unique<AudioActionController>(*m_ui->outputAudioButton, *m_ui->inputAudioButton);
    connect(m_ui->settingsButton, &QToolButton::clicked, this, [this] {
        m_autoStart->stop();
        emit settingsRequested();
    });
    m_ui->actionSleep->setIcon(QIcon(QStringLiteral(":/images/sleep.png")));
    m_ui->actionReboot->setIcon(QIcon(QStringLiteral(":/images/reboot.png")));
    m_ui->actionShutdown->setIcon(QIcon(QStringLiteral(":/images/shutdown.png")));
    m_powerMenu.setStyleSheet(StyleSheets::powerButtonSheet());
    m_powerMenu.addActions({m_ui->actionSleep, m_ui->actionReboot, m_ui->actionShutdown});
}

void SettingsApp::setUpLauncher()
{
    connect(m_ui->corvidPage, &CorvidPage::targetChanged, this, &SettingsApp::updateConnectButton);
    connect(m_ui->rdpPage, &RdpPage::targetChanged, this, &SettingsApp::updateConnectButton);
    connect(m_ui->corvidPage, &CorvidPage::refreshRequested, this, &SettingsApp::autoDetectServers);
    connect(m_ui->corvidPage, &CorvidPage::selectionChosen, this, [this](const QString &selection) {
        WindowSettings::store(&m_parts.configuration, Key::selection, selection);
    });
    connect(m_ui->autoConnectPage, &AutoConnectPage::connectRequested, this, &SettingsApp::autoConnect);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, this);
        enter->setAutoRepeat(false);
        m_enterShortcuts += enter;
        connect(enter, &QShortcut::activated, this, &SettingsApp::pressEnter);
    }
}

void SettingsApp::setUpSession()
{
    SessionService *session = &m_parts.session;
    connect(session, &SessionService::started, this, [this] {
        Popups::closeAll();
        hide();
        setCursor(Qt::WaitCursor);
    });
    connect(session, &SessionService::connecting, &m_connectingBox, &ConnectingBox::show);
    connect(session, &SessionService::clientEnded, &m_connectingBox, &ConnectingBox::closeConnectionDialog);
    connect(session, &SessionService::ended, this, &SettingsApp::connectionFinished);
    connect(session, &SessionService::primaryScreenSize, this,
            [](QSize &size) { size = QGuiApplication::primaryScreen()->geometry().size(); });
}

void SettingsApp::setUpBroker()
{
    m_ui->autoLogonPage->renameParts(QStringLiteral("autoLogon"));
    m_broker = std::make_unique<BrokerLauncher>(
        BrokerLauncher::Parts{*m_ui->solvaPage, *m_ui->solvaDesktopsPage, *m_ui->autoLogonPage,
                              m_parts.session, m_parts.configuration});
    connect(m_broker.get(), &BrokerLauncher::busy, this, &SettingsApp::setBusy);
    connect(m_broker.get(), &BrokerLauncher::brokerUsed, this, &SettingsApp::updateBrokerServers);
    m_autoStart = std::make_unique<AutoStart>(
        AutoStart::Parts{*m_ui->autoConnectPage, *m_ui->autoLogonPage, *m_broker});
    connect(m_broker.get(), &BrokerLauncher::loggedOut, this, [this] { showPage(LauncherPage); });
    connect(m_broker.get(), &BrokerLauncher::desktopsReady, this, [this] {
        showPage(DesktopsPage);
        m_ui->solvaDesktopsPage->focusList();
    });
    connect(m_broker.get(), &BrokerLauncher::failed, this, [this](const QString &message) {
        GeneralDialog::showError(this, tr("Connection Error"), message);
    });
}

void SettingsApp::setUpUpdate()
{
    UpdateService *updates = &m_parts.updates;
    ::UpdatePage *page = m_ui->updatePage;
    connect(updates, &UpdateService::opened, this, [this](const QString &text) {
        m_ui->updatePage->showProgress(text, -1, -1);
        m_pageBeforeUpdate = m_ui->mainStackedWidget->currentIndex();
        m_autoStart->stop();
        Popups::closeAll();
        m_ui->mainStackedWidget->setCurrentIndex(UpdatePage);
    });
    connect(updates, &UpdateService::progress, page, &::UpdatePage::showProgress);
    connect(updates, &UpdateService::installing, page, &::UpdatePage::showInstalling);
    connect(updates, &UpdateService::failed, page, &::UpdatePage::showFailure);
    connect(updates, &UpdateService::remaining, page, &::UpdatePage::showCountdown);
    connect(updates, &UpdateService::closed, this, [this] {
        applyPostponed();
        m_ui->mainStackedWidget->setCurrentIndex(m_pageBeforeUpdate);
    });
}

QJsonObject SettingsApp::root() const
{
    return m_parts.configuration.getDocument().object();
}

QJsonObject SettingsApp::connectionSettings(QLatin1String client) const
{
    return root().value(Key::connection).toObject().value(client).toObject();
}

void SettingsApp::loadConfiguration()
{
    const QJsonObject window = root().value(Key::mainWindow).toObject();
    const QJsonObject corvid = connectionSettings(Key::corvidConnection);
    loadServerGroups();
    m_ui->corvidPage->setManualEntryAllowed(corvid.value(Key::allowManualAddress).toBool());
    m_ui->corvidPage->setAutoDetectedShown(corvid.value(Key::showAutodetected).toBool());
    m_ui->corvidPage->setHistory(window.value(Key::manualServerHistory).toArray());
    m_ui->corvidPage->setSelection(window.value(Key::selection).toString());
    m_broker->loadConfiguration();
    const QJsonObject rdp = connectionSettings(Key::rdpConnection);
    m_ui->rdpPage->setServer(rdp.value(Key::rdpServerAddress).toString(),
                             rdp.value(Key::allowCustomRdpServers).toBool());
    m_topBar->showDeviceName(root().value(Key::general).toObject().value(Key::deviceName).toString());
    m_audio->setSettings(root().value(Key::audio).toObject());
    updateConnectButton();
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
    showLauncherPage(m_autoStart->due(clientMode));
    focusMode();
    autoDetectServers();
}

void SettingsApp::showLauncher()
{
    const AutoStart::Kind kind = m_autoStart->due(storedMode());
    if (kind != AutoStart::Kind::None)
        showClientMode(storedMode());
    showLauncherPage(kind);
}

void SettingsApp::resumeAutomatic()
{
    const int page = m_ui->mainStackedWidget->currentIndex();
    if (page == AutoConnectPage || page == AutoLogonPage)
        showLauncher();
}

/// A countdown whose page is shown already begins anew.
void SettingsApp::showLauncherPage(AutoStart::Kind kind)
{
    const int page = kind == AutoStart::Kind::Connect ? AutoConnectPage
        : kind == AutoStart::Kind::LogOn              ? AutoLogonPage
                                                      : LauncherPage;
    if (page != LauncherPage && page == m_ui->mainStackedWidget->currentIndex())
        m_autoStart->count(kind);
    else
        showPage(page);
}

void SettingsApp::setSettingsView(QWidget *view)
{
    auto *layout = new QVBoxLayout(m_ui->settingsPage);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
}

/// What is to be shown during an update waits behind it.
void SettingsApp::showPage(int page)
{
    if (m_ui->mainStackedWidget->currentIndex() == UpdatePage)
        m_pageBeforeUpdate = page;
    else
        m_ui->mainStackedWidget->setCurrentIndex(page);
}

void SettingsApp::showSettings()
{
    showPage(SettingsPage);
}

void SettingsApp::showClientMode(const QString &clientMode)
{
    showClientMode(modeOf(clientMode));
}

SettingsApp::ClientMode SettingsApp::clientMode() const
{
    return m_mode;
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
    if (m_modeShown && mode == m_mode)
        return;
    m_modeShown = true;
    m_mode = mode;
    m_broker->cancelLogon();
    QPushButton *buttons[] = {m_ui->CorvidProButton, m_ui->solvaVDIButton, m_ui->rdpClientButton};
    for (QPushButton *button : buttons)
        button->setStyleSheet(StyleSheets::uncheckedButtonSheet());
    buttons[static_cast<int>(mode)]->setStyleSheet(StyleSheets::checkedButtonSheet());
    m_ui->connectionStackedWidget->setCurrentIndex(static_cast<int>(mode));
    m_ui->connectButton->setVisible(mode != ClientMode::Solva);
    if (m_ui->mainStackedWidget->currentIndex() != SettingsPage)
        showPage(LauncherPage);
    focusMode();
    updateConnectButton();
    emit clientModeChanged(mode);
}

/// Puts the focus where a user begins. What is not shown never gets it.
void SettingsApp::focusMode()
{
    if (m_ui->mainStackedWidget->currentIndex() != LauncherPage)
        return;
    if (m_mode == ClientMode::Corvid)
        m_ui->corvidPage->focusFirst();
    else if (m_mode == ClientMode::Solva)
        m_ui->solvaPage->focusFirst();
    else if (m_mode == ClientMode::Rdp)
        m_ui->rdpPage->setFocus();
}

/// From a countdown or the desktops, the button of the mode that is shown leads back to the mode's page. A
/// user who presses one during a countdown does not want what it counts for.
void SettingsApp::chooseClientMode(ClientMode mode)
{
    const int page = m_ui->mainStackedWidget->currentIndex();
    if (page == AutoConnectPage || page == AutoLogonPage)
        m_autoStart->cancel();
    if (mode == m_mode)
        showPage(LauncherPage);
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

std::optional<ConnectTarget> SettingsApp::chosenTarget() const
{
    if (m_mode == ClientMode::Corvid && m_autoStart->connects() && m_autoStart->target().isComplete())
        return m_autoStart->target();
    switch (m_mode) {
    case ClientMode::Corvid:
        return m_ui->corvidPage->target();
    case ClientMode::Rdp:
        return m_ui->rdpPage->target();
    case ClientMode::Solva:
        break;
    }
    return std::nullopt;
}

void SettingsApp::updateConnectButton()
{
    const auto target = chosenTarget();
    m_ui->connectButton->setEnabled(target.has_value());
    if (target)
        qCDebug(lcLauncher).noquote() << "chosen:" << target->name;
}

/// Enter presses the button that has the focus, and on the launcher Connect from everywhere else.
void SettingsApp::pressEnter()
{
    if (auto *button = qobject_cast<QAbstractButton *>(focusWidget()))
        button->click();
    else if (m_ui->mainStackedWidget->currentIndex() == DesktopsPage)
        m_broker->on_connectSolvaButton_clicked();
    else if (m_ui->mainStackedWidget->currentIndex() == LauncherPage && m_ui->solvaPage->isVisible())
        m_ui->solvaPage->pressEnter();
    else if (m_ui->mainStackedWidget->currentIndex() == LauncherPage)
        m_ui->connectButton->click();
}

void SettingsApp::on_connectButton_clicked()
{
    const auto target = chosenTarget();
    if (target && m_parts.updates.isIdle())
        connectTo(*target);
}

void SettingsApp::autoConnect()
{
    if (m_autoStart->target().isComplete())
        return on_connectButton_clicked();
    showPage(LauncherPage);
    GeneralDialog::showError(
        this, tr("Connection Error"),
        tr("Server %1 has no address. Connection aborted!").arg(m_autoStart->target().name));
}

void SettingsApp::connectTo(const ConnectTarget &target)
{
    if (target.isGroup() && target.members.isEmpty()) {
        m_ui->autoConnectPage->showStopped();
        GeneralDialog::showError(this, tr("Empty group"),
                                 tr("Group %1 is empty. Connection aborted!").arg(target.name));
        return;
    }
    m_parts.session.connectTo(target);
}

void SettingsApp::connectionFinished(ConnectionFile::Verdict verdict)
{
    show();
    activateWindow();
    unsetCursor();
    m_autoStart->forgetCancel();
    if (!m_parts.updates.isIdle() || applyPostponed())
        return;
    const ClientMode mode = m_mode;
    // The countdown runs behind the error, which nobody may be there to close.
    if (m_autoStart->due(storedMode()) == AutoStart::Kind::Connect)
        showLauncher();
    if (mode == ClientMode::Corvid && verdict == ConnectionFile::Verdict::NoError)
        updateManualServers();
    if (m_parts.session.clientIsMissing())
        GeneralDialog::showError(this, tr("Connection Error"),
                                 tr("The program that shows the desktop could not be started."));
    else if (verdict == ConnectionFile::Verdict::ConnectionError)
        showConnectionError();
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
    GeneralDialog::showError(
        this, tr("Connection Error"),
        tr("The IP address or domain name you entered is not valid or does not have Corvid "
           "Pro installed. Please try again."));
}

void SettingsApp::on_mainStackedWidget_currentChanged(int index)
{
    // On the settings pages Enter belongs to the fields, and the view is left through its own buttons. An
    // update is not left at all.
    const bool settings = index == SettingsPage || index == UpdatePage;
    if (settings)
        m_autoStart->stop();
    for (QShortcut *enter : qAsConst(m_enterShortcuts))
        enter->setEnabled(!settings);
    for (QWidget *button :
         {static_cast<QWidget *>(m_ui->CorvidProButton), static_cast<QWidget *>(m_ui->solvaVDIButton),
          static_cast<QWidget *>(m_ui->rdpClientButton), static_cast<QWidget *>(m_ui->settingsButton)})
        button->setVisible(!settings);
    if (index == LauncherPage)
        focusMode();
    m_autoStart->count(index == AutoConnectPage     ? AutoStart::Kind::Connect
                           : index == AutoLogonPage ? AutoStart::Kind::LogOn
                                                    : AutoStart::Kind::None);
}

void SettingsApp::updateManualServers()
{
    m_ui->corvidPage->setHistory(WindowSettings::addToHistory(
        &m_parts.configuration, Key::manualServerHistory, m_parts.session.currentServerAddress()));
}

void SettingsApp::updateBrokerServers(const QString &address)
{
    WindowSettings::addToHistory(&m_parts.configuration, Key::solvaBrokerHistory, address);
    m_broker->loadConfiguration();
}

void SettingsApp::refreshServerGroups()
{
    m_parts.configuration.readAgain();
    loadServerGroups();
    autoDetectServers();
}

void SettingsApp::autoDetectServers()
{
    if (!connectionSettings(Key::corvidConnection).value(Key::showAutodetected).toBool())
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
    // The menu takes the pointer away without the button noticing.
    m_ui->powerButton->setAttribute(Qt::WA_UnderMouse, false);
    m_ui->powerButton->update();
    m_powerMenu.popup(m_ui->powerButton->mapToGlobal(powerMenuOffset));
}

bool SettingsApp::confirmed(const QString &title, const QString &message)
{
    return GeneralDialog::ask(this, title, message);
}

void SettingsApp::on_actionShutdown_triggered()
{
    if (confirmed(tr("Device shutdown"), tr("Shutdown device?")))
        m_parts.power.shutDown();
}

void SettingsApp::on_actionReboot_triggered()
{
    if (confirmed(tr("Device reboot"), tr("Reboot device?")))
        m_parts.power.resetDevice();
}

void SettingsApp::on_actionSleep_triggered()
{
    m_parts.power.sleep();
}

void SettingsApp::closeEvent(QCloseEvent *event)
{
    event->ignore();
}
