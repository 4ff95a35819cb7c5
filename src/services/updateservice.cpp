// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/updateservice.h"

#include "services/sessionservice.h"
#include "config/keys.h"
#include "device/devicetools.h"
#include "device/identity.h"
#include "update/terminalservermodule.h"
#include "update/updatemodule.h"

#include <QLoggingCategory>

#include <utility>

Q_LOGGING_CATEGORY(lcUpdateService, "kt.app.update")

namespace {

void answer(int *result, bool started)
{
    if (result)
        *result = started ? 0 : 1;
}

} // namespace

UpdateService::UpdateService(UpdateModule &update, TerminalServerModule &endpoint, SessionService &session,
                             QObject *parent)
    : QObject(parent)
    , m_update(update)
    , m_session(session)
{
    using Endpoint = TerminalServerModule;
    connect(&m_update, &UpdateModule::forwardProgress, this, &UpdateService::progress);
    connect(&m_update, &UpdateModule::downloadFinished, this, &UpdateService::downloadFWFinished);
    connect(&m_update, &UpdateModule::getServerList, &endpoint, [&endpoint] {
        int error = 0;
        endpoint.findTerminalServer(error);
    });
    connect(&m_update, &UpdateModule::ask_WantUdpFileData, &endpoint, &Endpoint::getUdpFileData);
    connect(&endpoint, &Endpoint::sendServerList, &m_update, &UpdateModule::setServerList);
    connect(&endpoint, &Endpoint::ask_HasUdpFileData, &m_update, &UpdateModule::ask_HasUdpFileData);
    connect(&endpoint, &Endpoint::firmwareUpdateLatest, this, &UpdateService::on_updateLatest);
    connect(&endpoint, &Endpoint::firmwareUpdateURL, this, &UpdateService::on_updateByURL);
    connect(&endpoint, &Endpoint::firmwareUpdateCORVID, this, &UpdateService::on_updateByCORVID);
    connect(&m_session, &SessionService::started, &m_update, &UpdateModule::setSessionConnectedState);
    connect(&m_session, &SessionService::ended, this, &UpdateService::handleSessionEnd);
    connect(&m_countdown, &Countdown::remaining, this, [this](int seconds) {
        emit remaining(seconds);
        if (seconds == 0)
            close();
    });
    setUpTimers();
}

/// An installer that is late still reads the image: the update goes on, so that no second one replaces it.
void UpdateService::setUpTimers()
{
    m_installerTimer.setSingleShot(true);
    m_installerTimer.setInterval(installerLimitMs);
    connect(&m_installerTimer, &QTimer::timeout, this, [this] {
        qCWarning(lcUpdateService) << "the installer has not ended";
        emit failed(tr("The installation has not ended.\nRestart the device if it does not do so itself."));
        emit powerLocked(false);
    });
    m_restartTimer.setSingleShot(true);
    m_restartTimer.setInterval(restartLimitMs);
    connect(&m_restartTimer, &QTimer::timeout, this,
            [this] { fail(tr("The device has not restarted after the installation.")); });
}

bool UpdateService::isIdle() const
{
    return m_update.ifUpdateIdle();
}

Countdown &UpdateService::countdown()
{
    return m_countdown;
}

void UpdateService::setInstallerLimit(int milliseconds)
{
    m_installerTimer.setInterval(milliseconds);
}

bool UpdateService::mayStart(const std::function<void()> &again)
{
    if (m_update.ifSessionConnected()) {
        qCInfo(lcUpdateService) << "an update waits for the session's end";
        m_postponed = again;
        m_session.abandonWalk();
        return false;
    }
    return m_update.ifUpdateIdle();
}

/// Of several requests during the session, the last one is carried out.
void UpdateService::handleSessionEnd()
{
    m_update.setIdleState();
    if (const auto waiting = std::exchange(m_postponed, nullptr))
        waiting();
}

void UpdateService::on_updateLatest(int *result)
{
    const bool starts = mayStart([this] { on_updateLatest(nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    emit opened(tr("Searching for Corvid servers..."));
    m_update.setMethod(UpdateMethod::Latest);
    m_update.setCurrentVersion(Identity::firmware().version);
    m_update.startUpdate();
}

QUrl UpdateService::address(const QString &url, const QString &user, const QString &password)
{
    const bool hasScheme = url.contains(QLatin1String("://"));
    QUrl result(hasScheme ? url : QLatin1String("ftp://") + url);
    // A user name would make an invalid URL valid, with the path's first folder as its server.
    if (!result.isValid() || (user.isEmpty() && !result.userName().isEmpty()))
        return result;
    result.setUserName(user.isEmpty() ? QStringLiteral("anonymous") : user, QUrl::DecodedMode);
    result.setPassword(password.isEmpty() ? QString() : password, QUrl::DecodedMode);
    return result;
}

void UpdateService::on_updateByURL(const QString &url, const QString &password, const QString &user,
                                   const QString &file, int *result)
{
    const bool starts = mayStart([=] { on_updateByURL(url, password, user, file, nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    emit opened(tr("Connecting..."));
    m_update.setMethod(UpdateMethod::Url);
    m_update.setURL(address(url + file, user, password));
    m_update.startUpdate();
}

void UpdateService::on_updateByCORVID(const QString &server, const QString &file, int *result)
{
    const bool starts = mayStart([=] { on_updateByCORVID(server, file, nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    emit opened(tr("Searching for Corvid servers..."));
    m_update.setMethod(UpdateMethod::CorvidServer);
    m_update.setCorvidServerUpdate(server, file);
    m_update.startUpdate();
}

void UpdateService::updateFirmware(const QJsonObject &settings)
{
    const auto text = [&settings](QLatin1String key) {
        return settings.value(key).toString();
    };
    const QString method = text(Key::method);
    if (method == QLatin1String("url"))
        on_updateByURL(text(Key::url).trimmed(), text(Key::password), text(Key::username), QString(),
                       nullptr);
    else if (method == QLatin1String("corvid"))
        on_updateByCORVID(text(Key::corvid).trimmed(), text(Key::fwFile), nullptr);
    else
        on_updateLatest(nullptr);
}

void UpdateService::downloadFWFinished(const QString &message)
{
    if (message.isEmpty()) {
        emit installing(tr("Download completed.\nUpdating..."));
        runInstaller();
    } else {
        fail(message);
    }
}

void UpdateService::runInstaller()
{
    qCInfo(lcUpdateService) << "start the installer";
    m_installerTimer.start();
    emit powerLocked(true);
    ToolRun::start(DeviceTools::installFirmware(), this,
                   [this](const ToolResult &result) { handleInstallerEnd(result); });
}

/// An installer that has ended well may take some time to bring the device down.
void UpdateService::handleInstallerEnd(const ToolResult &result)
{
    m_installerTimer.stop();
    emit powerLocked(false);
    if (result.succeeded())
        m_restartTimer.start();
    else
        fail(tr("The firmware could not be installed."));
}

void UpdateService::fail(const QString &message)
{
    qCWarning(lcUpdateService).noquote() << message;
    emit failed(message);
    m_countdown.start();
}

void UpdateService::close()
{
    m_countdown.stop();
    m_update.setIdleState();
    emit closed();
}
