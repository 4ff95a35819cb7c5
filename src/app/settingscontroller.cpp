// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingscontroller.h"

#include "launcher/settingsapp.h"
#include "app/settingspages.h"
#include "launcher/topbar.h"
#include "config/applicationproxy.h"
#include "config/audiosettings.h"
#include "config/compatibility.h"
#include "config/defaults.h"
#include "config/keys.h"
#include "config/upgrades.h"
#include "device/commands.h"
#include "device/devicetools.h"
#include "device/diagnostics.h"
#include "device/paths.h"
#include "management/qmdaddress.h"
#include "pages/administratorpassword.h"
#include "widgets/generaldialog.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QNetworkInterface>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

Q_LOGGING_CATEGORY(lcController, "kt.app.controller")

namespace {

/// A message is a few words; what is larger is not one.
constexpr qint64 messageLimit = 64 * 1024;
/// Sound cards may be slow to answer: the launcher is shown first.
constexpr int firstAudioMs = 200;

bool interfaceExists(const QString &name)
{
    return QNetworkInterface::interfaceFromName(name).isValid();
}

bool upgradeNetwork(QJsonObject &root)
{
    if (!Upgrades::hasOldNetwork(root))
        return false;
    Diagnostics::print(QStringLiteral("UPGRADE TO NEW NETWORK"));
    Upgrades::toNewNetwork(root);
    return true;
}

bool upgradeToVersion15(QJsonObject &root)
{
    if (Upgrades::effectiveVersion(root) > Upgrades::oldestVersion) {
        Diagnostics::print(QStringLiteral("UPGRADE TO 15 SKIPPED"));
        return false;
    }
    Diagnostics::print(QStringLiteral("UPGRADE TO 15 STARTED"));
    Upgrades::toVersion15(root);
    return true;
}

QString hostName()
{
    const QByteArray output = Commands::query(QStringLiteral("hostname"), {});
    const QString name = QString::fromLocal8Bit(output).remove(QLatin1Char('\n'));
    qCDebug(lcController) << name;
    return name;
}

} // namespace

SettingsController::SettingsController(SettingsApp *window, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_configuration(QStringLiteral("config.json"), true)
    , m_network(m_commands)
    , m_networkStatus(m_network, m_configuration)
    , m_applier(m_configuration, m_commands, m_network, m_resolutions)
    , m_remote(m_configuration,
               {[this] {
                    int result = 0;
                    m_window->checkResetPossible(&result);
                    return result != 0;
                },
                [this] { return m_window->updateModule().ifSessionConnected(); }})
    , m_agentFeed(*window, m_configuration)
{
    connectWindow();
    connectNetworkStatus();
    connectAudio();
    connectRemote();
    connectApplier();
    loadConfiguration();
    setupProxy();
    m_networkStatus.initNetworkStatus();
}

SettingsController::~SettingsController() = default;

JsonModule &SettingsController::configuration()
{
    return m_configuration;
}

NetworkStatus &SettingsController::networkStatus()
{
    return m_networkStatus;
}

ResolutionContainer &SettingsController::resolutions()
{
    return m_resolutions;
}

RemoteConfiguration &SettingsController::remoteConfiguration()
{
    return m_remote;
}

SettingsApplier &SettingsController::applier()
{
    return m_applier;
}

void SettingsController::mergeRemoteConfig(const QJsonObject &remote, int *result)
{
    m_remote.mergeRemoteConfig(remote, result);
}

bool SettingsController::saveRemoteConfig(const QJsonObject &merged)
{
    return m_remote.saveRemoteConfig(merged);
}

void SettingsController::applyRemoteConfig()
{
    m_applier.follow();
}

void SettingsController::handlePostponeConfiguration()
{
    m_applier.follow();
    prepareGUI();
    m_window->showLauncher();
}

/// Nobody works on the remote desktop: the screen shows the new document at once.
void SettingsController::showMerged()
{
    prepareGUI();
    m_window->showLauncher();
    QApplication::closeAllWindows(); // the main window refuses
}

/// The pages are filled anew whenever the settings are shown; until then it is enough that nothing counts as
/// edited.
void SettingsController::prepareGUI()
{
    if (m_pages) {
        m_pages->discard();
        m_pages->view().setApplyEnabled(false);
    }
    m_window->loadConfiguration();
    m_window->showClientMode(m_configuration.getDocument()
                                 .object()
                                 .value(Key::general)
                                 .toObject()
                                 .value(Key::clientMode)
                                 .toString());
}

void SettingsController::connectWindow()
{
    m_window->setConfiguration(&m_configuration);
    connect(m_window, &SettingsApp::getProxyParameters, this, &SettingsController::fillProxyParameters);
    connect(m_window, &SettingsApp::secondaryMonitorParameters, this,
            &SettingsController::fillSecondaryParameter);
    connect(m_window, &SettingsApp::settingsRequested, this, &SettingsController::on_settingsButton_clicked);
    connect(this, &SettingsController::dualMonitorChanged, m_window, &SettingsApp::setDualDisplay);
}

void SettingsController::connectNetworkStatus()
{
    TopBar *bar = &m_window->topBar();
    connect(&m_networkStatus, &NetworkStatus::wiredStatus, bar, &TopBar::setWiredNetworkStatus);
    connect(&m_networkStatus, &NetworkStatus::wirelessStatus, bar, &TopBar::setWirelessNetworkStatus);
    connect(&m_networkStatus, &NetworkStatus::wiredIconShown, bar, &TopBar::setWiredIconShown);
    connect(&m_networkStatus, &NetworkStatus::wirelessIconShown, bar, &TopBar::setWirelessIconShown);
    connect(&m_networkStatus, &NetworkStatus::wiredToolTip, bar, &TopBar::setWiredToolTip);
    connect(&m_networkStatus, &NetworkStatus::wirelessToolTip, bar, &TopBar::setWirelessToolTip);
    connect(&m_networkStatus, &NetworkStatus::serverGroupsAffected, m_window,
            &SettingsApp::refreshServerGroups);
}

void SettingsController::connectRemote()
{
    connect(m_window, &SettingsApp::mergeRemoteConfig, this, &SettingsController::mergeRemoteConfig);
    connect(m_window, &SettingsApp::applyConfig, this, &SettingsController::applyRemoteConfig);
    connect(m_window, &SettingsApp::handlePostponeConfiguration, this,
            &SettingsController::handlePostponeConfiguration);
    connect(&m_remote, &RemoteConfiguration::screensOutdated, this, &SettingsController::showMerged);
    connect(&m_remote, &RemoteConfiguration::screensPostponed, m_window, &SettingsApp::postponeConfiguration);
    connect(&m_remote, &RemoteConfiguration::configurationMerged, &m_agentFeed, &AgentFeed::takeMerged);
    connect(&m_networkStatus, &NetworkStatus::wiredStatus, &m_agentFeed, &AgentFeed::takeNetworkStatus);
    connect(&m_networkStatus, &NetworkStatus::wirelessStatus, &m_agentFeed, &AgentFeed::takeNetworkStatus);
}

void SettingsController::connectApplier()
{
    m_applier.setSessionCheck([this] { return m_window->updateModule().ifSessionConnected(); });
    connect(&m_applier, &SettingsApplier::wiredApplied, &m_networkStatus, &NetworkStatus::takeWiredApplied);
    connect(&m_applier, &SettingsApplier::wirelessLeft, &m_networkStatus, &NetworkStatus::takeWirelessLeft);
    connect(&m_configuration, &JsonModule::changed, this, &SettingsController::followDocument);
}

/// What this program itself does otherwise when the document has changed.
void SettingsController::followDocument()
{
    const QJsonObject root = m_configuration.getDocument().object();
    setupProxy();
    m_window->endpoint().enableComunication(
        root.value(Key::management).toObject().value(Key::consoleManagement).toBool());
    const QJsonObject sound = root.value(Key::audio).toObject();
    if (std::exchange(m_sound, sound) != sound && !m_storingSound)
        m_window->audioActions().setSettings(sound);
}

void SettingsController::connectAudio()
{
    AudioActionController &actions = m_window->audioActions();
    connect(this, &SettingsController::audioRefreshRequested, &m_audio, &AudioController::readDevices);
    connect(&m_audio, &AudioController::sendAudioDevices, &actions, &AudioActionController::getAudioDevices);
    connect(&actions, &AudioActionController::outputChosen, this, &SettingsController::setOutputAudio);
    connect(&actions, &AudioActionController::inputChosen, this, &SettingsController::setInputAudio);
    QTimer::singleShot(firstAudioMs, &m_audio, &AudioController::readDevices);
}

void SettingsController::loadConfiguration()
{
    loadDefaultConfig(m_defaults);
    m_configuration.getParameters(m_defaults);
    if (m_configuration.isConfigCorrect())
        checkConfigVersion();
    const QJsonObject root = m_configuration.getDocument().object();
    m_sound = root.value(Key::audio).toObject();
    m_window->loadConfiguration();
    m_window->openLauncher(root.value(Key::general).toObject().value(Key::clientMode).toString());
    m_commands.add(DeviceTools::setNumLock(root.value(Key::keyboard).toObject().value(Key::numlockOn).toBool()));
    m_applier.start();
}

/// Most users never see the settings: their start does not wait for them.
SettingsPages &SettingsController::settingsPages()
{
    if (!m_pages) {
        m_pages = std::make_unique<SettingsPages>(
            *m_window, m_configuration,
            SettingsPages::Device{m_network, m_networkStatus, m_resolutions, m_audio, m_applier});
        connect(&m_pages->view(), &SettingsView::applyRequested, this,
                &SettingsController::on_applyButton_clicked);
        connect(&m_pages->view(), &SettingsView::backRequested, this,
                &SettingsController::on_backButton_clicked);
    }
    return *m_pages;
}

void SettingsController::on_settingsButton_clicked()
{
    SettingsPages &pages = settingsPages();
    pages.view().showPage(0);
    m_configuration.readAgain(); // without a document there would be no password to ask for
    pages.fill();
    if (!AdministratorPassword::ask(m_window, m_configuration.getDocument().object()))
        return;
    m_window->showSettings();
    pages.view().setFocus();
    pages.view().setApplyEnabled(false);
}

void SettingsController::on_applyButton_clicked()
{
    if (!settingsPages().apply())
        return;
    leaveSettings();
    m_agentFeed.takeApplied();
}

void SettingsController::on_backButton_clicked()
{
    if (settingsPages().view().hasUnsavedChanges()
        && !GeneralDialog::ask(m_window, tr("Info"), tr("There are unsaved changes. Continue?")))
        return;
    leaveSettings();
}

QString SettingsController::setQMDaddress()
{
    return QmdAddress::url(m_configuration.getDocument().object().value(Key::management).toObject());
}

bool SettingsController::setupProxy()
{
    const QJsonObject network = m_configuration.getDocument().object().value(Key::network).toObject();
    return ApplicationProxy::install(ApplicationProxy::fromSettings(network.value(Key::proxy).toObject()));
}

void SettingsController::leaveSettings()
{
    m_configuration.readAgain();
    settingsPages().discard();
    settingsPages().view().setApplyEnabled(false);
    m_window->loadConfiguration();
    m_window->showLauncher();
    m_window->autoDetectServers();
}

void SettingsController::checkConfigVersion()
{
    upgrade({upgradeNetwork, upgradeToVersion15});
}

void SettingsController::upgradeConfigToNewNetwork()
{
    upgrade({upgradeNetwork});
}

void SettingsController::upgradeConfigToVer15()
{
    upgrade({upgradeToVersion15});
}

/// Takes the document through the steps in one change. Where it cannot be written, what was read is of no use:
/// the upgraded document is held.
void SettingsController::upgrade(const QVector<JsonModule::Edit> &steps)
{
    bool newVersion = false;
    const auto edit = [&](QJsonObject &root) {
        const int before = Upgrades::effectiveVersion(root);
        bool edited = false;
        for (const JsonModule::Edit &step : steps)
            edited = step(root) || edited;
        newVersion = Upgrades::effectiveVersion(root) != before;
        return edited;
    };
    m_configuration.change(edit, JsonModule::OnFailure::Hold);
    if (newVersion)
        applyNetwork();
}

void SettingsController::applyNetwork()
{
    m_network.setNetworkConfig();
    m_network.autoconnect();
    m_network.afterCommands(this, [this] { m_networkStatus.takeApplied(); });
}

bool SettingsController::checkConfigCompatibility(const QJsonObject &remote)
{
    return Compatibility::checkObjects(m_configuration.getDocument().object(), remote);
}

void SettingsController::loadDefaultConfig(QJsonObject &out)
{
    const QString deviceName = hostName();
    out = Defaults::document(deviceName, generateDefaultNetwork());
}

QJsonObject SettingsController::generateDefaultNetwork()
{
    const QString eth0 = QStringLiteral("eth0");
    const QString wlan0 = QStringLiteral("wlan0");
    Defaults::NetworkState state;
    state.wiredPresent = interfaceExists(eth0) && m_network.getNetworkByInterface(eth0, state.wired);
    state.wirelessPresent = interfaceExists(wlan0) && m_network.getNetworkByInterface(wlan0, state.wireless);
    if (state.wirelessPresent) {
        m_network.GetWifiNetworkList(state.scan);
        m_network.getActualWifi(state.wireless);
    }
    return Defaults::networkSettings(state);
}

void SettingsController::getRemoteMessage()
{
    QFile file(Paths::message());
    if (!QFileInfo(file).isFile() || file.size() > messageLimit || !file.open(QIODevice::ReadOnly)) {
        qCWarning(lcController).noquote() << "no message in" << file.fileName();
        return;
    }
    QJsonParseError error;
    const QJsonDocument message = QJsonDocument::fromJson(file.read(messageLimit), &error);
    if (!message.isObject())
        qCWarning(lcController).noquote() << "not a message:" << error.errorString();
    else
        takeMessage(message.object());
}

void SettingsController::takeMessage(const QJsonObject &message)
{
    const QString type = message.value(QLatin1String("type")).toString();
    const QJsonObject content = message.value(type).toObject();
    if (type == QLatin1String("network status")) {
        m_networkStatus.takeMessage(content.value(QLatin1String("interface")).toString(),
                                    content.value(QLatin1String("message")).toString());
    } else if (type == QLatin1String("dual monitor status")) {
        const QString status = content.value(QLatin1String("status")).toString();
        if (status == QLatin1String("add") || status == QLatin1String("remove"))
            emit dualMonitorChanged(status == QLatin1String("add"));
    } else if (type == QLatin1String("refresh audio")) {
        emit audioRefreshRequested();
    }
}

void SettingsController::fillProxyParameters(QJsonObject &proxy)
{
    m_configuration.readAgain();
    proxy
        = m_configuration.getDocument().object().value(Key::network).toObject().value(Key::proxy).toObject();
}

void SettingsController::fillSecondaryParameter(QString &resolution, int &atLeft, int &bottomAligned)
{
    const QJsonObject secondary = m_configuration.getDocument()
                                      .object()
                                      .value(Key::display)
                                      .toObject()
                                      .value(Key::secondary)
                                      .toObject();
    const QString position = secondary.value(Key::position).toString();
    resolution = secondary.value(Key::resolution).toString();
    atLeft = position == QLatin1String("left") ? 1 : 0;
    bottomAligned = position == QLatin1String("bottom") ? 1 : 0;
}

void SettingsController::testResolutionFromConsole(const QString &size)
{
    m_resolutions.setResolutionFromConsole(size);
}

void SettingsController::setOutputAudio(const QString &name, const QString &number,
                                        const QString &checkedName, const QString &checkedNumber)
{
    storeAudio(AudioDirection::Output, {name, number}, {checkedName, checkedNumber});
}

void SettingsController::setInputAudio(const QString &name, const QString &number, const QString &checkedName,
                                       const QString &checkedNumber)
{
    storeAudio(AudioDirection::Input, {name, number}, {checkedName, checkedNumber});
}

void SettingsController::storeAudio(AudioDirection direction, const AudioChoice &device,
                                    const AudioChoice &checked)
{
    const QScopedValueRollback<bool> own(m_storingSound, true);
    const JsonModule::Change change = m_configuration.change([&](QJsonObject &root) {
        QJsonObject audio = root.value(Key::audio).toObject();
        AudioSettings::setInUse(audio, direction, device);
        AudioSettings::setChecked(audio, direction, checked);
        root.insert(Key::audio, audio);
        return true;
    });
    if (change == JsonModule::Change::Written)
        ToolRun::start(DeviceTools::signalSession());
}
