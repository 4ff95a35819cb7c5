// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingscontroller.h"

#include "launcher/settingsapp.h"
#include "app/settingspages.h"
#include "launcher/topbar.h"
#include "config/applicationproxy.h"
#include "config/audiosettings.h"
#include "config/compatibility.h"
#include "config/keys.h"
#include "device/audiocontroller.h"
#include "device/devicetools.h"
#include "device/networkcontroller.h"
#include "device/paths.h"
#include "device/resolutioncontainer.h"
#include "management/qmdaddress.h"
#include "pages/administratorpassword.h"
#include "services/networkstatus.h"
#include "services/remoteconfiguration.h"
#include "services/settingsapplier.h"
#include "services/startdocument.h"
#include "widgets/generaldialog.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

Q_LOGGING_CATEGORY(lcController, "kt.app.controller")

namespace {

/// A message is a few words; what is larger is not one.
constexpr qint64 messageLimit = 64 * 1024;
/// Sound cards may be slow to answer: the launcher is shown first.
constexpr int firstAudioMs = 200;

} // namespace

SettingsController::SettingsController(SettingsApp *window, const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_parts(parts)
{
    connectWindow();
    connectNetworkStatus();
    connectAudio();
    connectRemote();
}

SettingsController::~SettingsController() = default;

void SettingsController::start()
{
    loadConfiguration();
    setupProxy();
    m_parts.networkStatus.initNetworkStatus();
    QTimer::singleShot(firstAudioMs, &m_parts.audio, &AudioController::readDevices);
}

void SettingsController::mergeRemoteConfig(const QJsonObject &remote, int *result)
{
    m_parts.remote.mergeRemoteConfig(remote, result);
}

bool SettingsController::saveRemoteConfig(const QJsonObject &merged)
{
    return m_parts.remote.saveRemoteConfig(merged);
}

void SettingsController::applyRemoteConfig()
{
    m_parts.applier.follow();
}

void SettingsController::handlePostponeConfiguration()
{
    m_parts.applier.follow();
    showDocumentAnew();
}

/// Nobody works on the remote desktop: the screen shows the new document at once.
void SettingsController::showMerged()
{
    showDocumentAnew();
    QApplication::closeAllWindows(); // the main window refuses
}

/// The search for servers may have been switched on.
void SettingsController::showDocumentAnew()
{
    prepareGUI();
    m_window->showLauncher();
    m_window->autoDetectServers();
}

/// What the window and the program's own connections do otherwise when the document has changed.
void SettingsController::followDocument()
{
    setupProxy();
    const QJsonObject sound = m_parts.configuration.getDocument().object().value(Key::audio).toObject();
    if (std::exchange(m_sound, sound) != sound && !m_storingSound)
        m_window->audioActions().setSettings(sound);
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
    m_window->showClientMode(m_parts.configuration.getDocument()
                                 .object()
                                 .value(Key::general)
                                 .toObject()
                                 .value(Key::clientMode)
                                 .toString());
}

void SettingsController::connectWindow()
{
    connect(m_window, &SettingsApp::settingsRequested, this, &SettingsController::on_settingsButton_clicked);
    connect(this, &SettingsController::dualMonitorChanged, m_window, &SettingsApp::setDualDisplay);
}

void SettingsController::connectNetworkStatus()
{
    TopBar *bar = &m_window->topBar();
    connect(&m_parts.networkStatus, &NetworkStatus::wiredStatus, bar, &TopBar::setWiredNetworkStatus);
    connect(&m_parts.networkStatus, &NetworkStatus::wirelessStatus, bar, &TopBar::setWirelessNetworkStatus);
    connect(&m_parts.networkStatus, &NetworkStatus::wiredIconShown, bar, &TopBar::setWiredIconShown);
    connect(&m_parts.networkStatus, &NetworkStatus::wirelessIconShown, bar, &TopBar::setWirelessIconShown);
    connect(&m_parts.networkStatus, &NetworkStatus::wiredToolTip, bar, &TopBar::setWiredToolTip);
    connect(&m_parts.networkStatus, &NetworkStatus::wirelessToolTip, bar, &TopBar::setWirelessToolTip);
    connect(&m_parts.networkStatus, &NetworkStatus::serverGroupsAffected, m_window,
            &SettingsApp::refreshServerGroups);
    connect(&m_parts.networkStatus, &NetworkStatus::addressChanged, m_window,
            &SettingsApp::autoDetectServers);
}

void SettingsController::connectRemote()
{
    connect(m_window, &SettingsApp::handlePostponeConfiguration, this,
            &SettingsController::handlePostponeConfiguration);
    connect(&m_parts.remote, &RemoteConfiguration::screensOutdated, this, &SettingsController::showMerged);
    connect(&m_parts.remote, &RemoteConfiguration::screensPostponed, m_window,
            &SettingsApp::postponeConfiguration);
    connect(&m_parts.configuration, &JsonModule::changed, this, &SettingsController::followDocument);
}

void SettingsController::connectAudio()
{
    AudioActionController &actions = m_window->audioActions();
    connect(this, &SettingsController::audioRefreshRequested, &m_parts.audio, &AudioController::readDevices);
    connect(&m_parts.audio, &AudioController::sendAudioDevices, &actions,
            &AudioActionController::getAudioDevices);
    connect(&actions, &AudioActionController::outputChosen, this, &SettingsController::setOutputAudio);
    connect(&actions, &AudioActionController::inputChosen, this, &SettingsController::setInputAudio);
}

void SettingsController::loadConfiguration()
{
    connect(&m_parts.startDocument, &StartDocument::replaced, this, [this] {
        showDocument();
        setupProxy();
        m_parts.networkStatus.initNetworkStatus();
    });
    connect(&m_parts.startDocument, &StartDocument::unreadable, this, &SettingsController::showUnreadable);
    connect(&m_parts.startDocument, &StartDocument::networkApplied, &m_parts.networkStatus,
            &NetworkStatus::takeApplied);
    m_parts.startDocument.start();
    showDocument();
    const QJsonObject root = m_parts.configuration.getDocument().object();
    ToolRun::start(
        DeviceTools::setNumLock(root.value(Key::keyboard).toObject().value(Key::numlockOn).toBool()));
}

void SettingsController::showDocument()
{
    const QJsonObject root = m_parts.configuration.getDocument().object();
    m_sound = root.value(Key::audio).toObject();
    m_window->loadConfiguration();
    m_window->openLauncher(root.value(Key::general).toObject().value(Key::clientMode).toString());
}

void SettingsController::showUnreadable()
{
    GeneralDialog::showError(
        m_window, tr("Error"),
        tr("The stored settings cannot be read. Until they can, the device works with the "
           "factory settings and stores no changes. Restart the device."));
}

/// Most users never see the settings: their start does not wait for them.
SettingsPages &SettingsController::settingsPages()
{
    if (!m_pages) {
        m_pages = std::make_unique<SettingsPages>(
            *m_window, m_parts.configuration,
            SettingsPages::Device{m_parts.network, m_parts.networkStatus, m_parts.resolutions, m_parts.audio,
                                  m_parts.applier});
        connect(&m_pages->view(), &SettingsView::applyRequested, this,
                &SettingsController::on_applyButton_clicked);
        connect(&m_pages->view(), &SettingsView::backRequested, this,
                &SettingsController::on_backButton_clicked);
    }
    return *m_pages;
}

void SettingsController::on_settingsButton_clicked()
{
    m_parts.configuration.readAgain(); // without a document there would be no password to ask for
    if (m_parts.configuration.isProvisional()) {
        showUnreadable();
        m_window->resumeAutomatic();
        return;
    }
    if (!AdministratorPassword::ask(m_window, m_parts.configuration.getDocument().object())) {
        m_window->resumeAutomatic();
        return;
    }
    SettingsPages &pages = settingsPages();
    pages.view().showPage(0);
    pages.fill(); // which shows the stored client mode
    m_window->showSettings();
    pages.view().setFocus();
    pages.view().setApplyEnabled(false);
}

void SettingsController::on_applyButton_clicked()
{
    const QJsonDocument before = m_parts.configuration.getDocument();
    const bool complete = settingsPages().apply();
    if (complete)
        leaveSettings();
    // The pages before one that refuses have been stored.
    if (complete || m_parts.configuration.getDocument() != before)
        emit settingsApplied();
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
    return QmdAddress::url(m_parts.configuration.getDocument().object().value(Key::management).toObject());
}

bool SettingsController::setupProxy()
{
    const QJsonObject network = m_parts.configuration.getDocument().object().value(Key::network).toObject();
    return ApplicationProxy::install(network.value(Key::proxy).toObject());
}

void SettingsController::leaveSettings()
{
    m_parts.configuration.readAgain();
    settingsPages().discard();
    settingsPages().view().setApplyEnabled(false);
    m_window->loadConfiguration();
    m_window->showLauncher();
    m_window->autoDetectServers();
}

bool SettingsController::checkConfigCompatibility(const QJsonObject &remote)
{
    return Compatibility::checkObjects(m_parts.configuration.getDocument().object(), remote);
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
        m_parts.networkStatus.takeMessage(content.value(QLatin1String("interface")).toString(),
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
    m_parts.configuration.readAgain();
    proxy = m_parts.configuration.getDocument()
                .object()
                .value(Key::network)
                .toObject()
                .value(Key::proxy)
                .toObject();
}

void SettingsController::fillSecondaryParameter(QString &resolution, int &atLeft, int &bottomAligned)
{
    const QJsonObject secondary = m_parts.configuration.getDocument()
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
    m_parts.resolutions.setResolutionFromConsole(size);
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
    const JsonModule::Change change = m_parts.configuration.change([&](QJsonObject &root) {
        QJsonObject audio = root.value(Key::audio).toObject();
        AudioSettings::setInUse(audio, direction, device);
        AudioSettings::setChecked(audio, direction, checked);
        root.insert(Key::audio, audio);
        return true;
    });
    if (change == JsonModule::Change::Written)
        ToolRun::start(DeviceTools::signalSession());
}
