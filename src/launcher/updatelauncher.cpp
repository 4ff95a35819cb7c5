// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/updatelauncher.h"

#include "launcher/updatepage.h"
#include "config/keys.h"
#include "device/devicetools.h"
#include "device/identity.h"
#include "update/updatemodule.h"

#include <QLoggingCategory>

#include <utility>

Q_LOGGING_CATEGORY(lcUpdateLauncher, "kt.app.update")

namespace {

/// While the installer runs nothing is drawn; the words about it are by then.
constexpr int paintTimeMs = 100;

void answer(int *result, bool started)
{
    if (result)
        *result = started ? 0 : 1;
}

} // namespace

UpdateLauncher::UpdateLauncher(UpdatePage &page, UpdateModule &update, QObject *parent)
    : QObject(parent)
    , m_page(page)
    , m_update(update)
{
    connect(&m_update, &UpdateModule::forwardProgress, this, &UpdateLauncher::updateFWProgresbar);
    connect(&m_update, &UpdateModule::downloadFinished, this, &UpdateLauncher::downloadFWFinished);
    connect(&m_countdown, &Countdown::remaining, this, [this](int seconds) {
        m_page.showCountdown(seconds);
        if (seconds == 0)
            leave();
    });
    m_installerTimer.setSingleShot(true);
    m_installerTimer.setInterval(installerLimitMs);
    connect(&m_installerTimer, &QTimer::timeout, this, [this] {
        qCWarning(lcUpdateLauncher) << "the installer has not restarted the device";
        leave();
    });
}

Countdown &UpdateLauncher::countdown()
{
    return m_countdown;
}

void UpdateLauncher::setInstallerLimit(int milliseconds)
{
    m_installerTimer.setInterval(milliseconds);
}

bool UpdateLauncher::mayStart(const std::function<void()> &again)
{
    if (m_update.ifSessionConnected()) {
        qCInfo(lcUpdateLauncher) << "an update waits for the session's end";
        m_postponed = again;
        emit postponed();
        return false;
    }
    return m_update.ifUpdateIdle();
}

bool UpdateLauncher::replayPostponed()
{
    const auto waiting = std::exchange(m_postponed, nullptr);
    if (!waiting)
        return false;
    waiting();
    return true;
}

void UpdateLauncher::on_updateLatest(int *result)
{
    const bool starts = mayStart([this] { on_updateLatest(nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    openUpdateWindow(tr("Searching for Corvid servers..."));
    m_update.setMethod(UpdateMethod::Latest);
    m_update.setCurrentVersion(Identity::firmware().version);
    m_update.startUpdate();
}

QUrl UpdateLauncher::address(const QString &url, const QString &user, const QString &password)
{
    const bool hasScheme = url.contains(QLatin1String("://"));
    QUrl result(hasScheme ? url : QLatin1String("ftp://") + url);
    if (user.isEmpty() && !result.userName().isEmpty())
        return result;
    result.setUserName(user.isEmpty() ? QStringLiteral("anonymous") : user, QUrl::DecodedMode);
    result.setPassword(password.isEmpty() ? QString() : password, QUrl::DecodedMode);
    return result;
}

void UpdateLauncher::on_updateByURL(const QString &url, const QString &password, const QString &user,
                                    const QString &file, int *result)
{
    const bool starts = mayStart([=] { on_updateByURL(url, password, user, file, nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    openUpdateWindow(tr("Connecting..."));
    m_update.setMethod(UpdateMethod::Url);
    m_update.setURL(address(url + file, user, password));
    m_update.startUpdate();
}

void UpdateLauncher::on_updateByCORVID(const QString &server, const QString &file, int *result)
{
    const bool starts = mayStart([=] { on_updateByCORVID(server, file, nullptr); });
    answer(result, starts);
    if (!starts)
        return;
    openUpdateWindow(tr("Searching for Corvid servers..."));
    m_update.setMethod(UpdateMethod::CorvidServer);
    m_update.setCorvidServerUpdate(server, file);
    m_update.startUpdate();
}

void UpdateLauncher::updateFirmware(const QJsonObject &settings)
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

void UpdateLauncher::openUpdateWindow(const QString &text)
{
    m_page.showProgress(text, -1, -1);
    emit windowRequested();
}

void UpdateLauncher::updateFWProgresbar(const QString &what, qint64 received, qint64 total)
{
    m_page.showProgress(what, received, total);
}

void UpdateLauncher::downloadFWFinished(const QString &message)
{
    if (message.isEmpty()) {
        m_page.showSuccess(tr("Download completed.\nUpdating..."));
        QTimer::singleShot(paintTimeMs, this, &UpdateLauncher::runInstaller);
        return;
    }
    qCWarning(lcUpdateLauncher).noquote() << message;
    m_page.showFailure(message);
    m_countdown.start();
}

void UpdateLauncher::runInstaller()
{
    qCInfo(lcUpdateLauncher) << "start the installer";
    m_installerTimer.start();
    ToolRun::start(DeviceTools::installFirmware());
}

void UpdateLauncher::leave()
{
    m_countdown.stop();
    m_update.setIdleState();
    emit windowDone();
}
