// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/brokerlauncher.h"

#include "launcher/autoconnectpage.h"
#include "launcher/solvadesktopspage.h"
#include "launcher/solvapage.h"
#include "launcher/windowsettings.h"
#include "services/sessionservice.h"
#include "config/jsonmodule.h"
#include "config/keys.h"

BrokerLauncher::BrokerLauncher(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(&m_manager, &SolvaAccessManager::sendReply, this, &BrokerLauncher::solvaReply);
    connect(&m_parts.logon, &SolvaPage::loginRequested, this, &BrokerLauncher::on_loginSolvaButton_clicked);
    connect(&m_parts.logon, &SolvaPage::desktopsRequested, this, &BrokerLauncher::desktopsReady);
    connect(&m_parts.desktops, &SolvaDesktopsPage::connectRequested, this,
            &BrokerLauncher::on_connectSolvaButton_clicked);
    connect(&m_parts.desktops, &SolvaDesktopsPage::logoutRequested, this,
            &BrokerLauncher::on_logoutSolvaButton_clicked);
    connect(&m_parts.autoLogon, &AutoConnectPage::connectRequested, this, [this] { logOn(true); });
}

QJsonObject BrokerLauncher::section(QLatin1String key) const
{
    return m_parts.configuration.getDocument().object().value(key).toObject();
}

QJsonObject BrokerLauncher::settings() const
{
    return section(Key::connection).value(Key::solvaConnection).toObject();
}

QString BrokerLauncher::storedBroker() const
{
    return settings().value(Key::brokerAddress).toString().trimmed();
}

bool BrokerLauncher::autoLogonEnabled() const
{
    const bool told = settings().value(Key::autoconnect).toObject().value(Key::enabled).toBool();
    return told && !storedBroker().isEmpty()
        && !section(Key::autologon).value(Key::username).toString().isEmpty();
}

void BrokerLauncher::loadConfiguration()
{
    const QJsonObject application = section(Key::appAutostart);
    const bool started = application.value(Key::enabled).toBool();
    m_parts.logon.setBroker(storedBroker(), settings().value(Key::allowCustomBrokers).toBool(),
                            section(Key::mainWindow).value(Key::solvaBrokerHistory).toArray());
    m_parts.logon.setStoredLogon(
        autoLogonEnabled() ? section(Key::autologon).value(Key::username).toString() : QString(),
        autoLogonEnabled() ? section(Key::autologon).value(Key::domain).toString() : QString());
    m_manager.setAppAutostart(started ? application.value(Key::program).toString() : QString());
    m_manager.setAppAutostartDir(started ? application.value(Key::path).toString() : QString());
    m_manager.setKeyboardLayout(section(Key::keyboard).value(Key::layout).toString());
    m_manager.setDualDisplayPosition(
        section(Key::display).value(Key::secondary).toObject().value(Key::position).toString());
}

void BrokerLauncher::setDualDisplay(bool inUse)
{
    m_manager.setDualDisplayConnection(inUse);
}

void BrokerLauncher::startSolvaAutoLogon()
{
    m_parts.autoLogon.startSolvaAutoLogon(section(Key::autologon).value(Key::username).toString(),
                                          storedBroker());
}

void BrokerLauncher::setSolvaDefaultProtocol()
{
    m_parts.desktops.setProtocol(settings().value(Key::defaultProtocol).toString());
}

void BrokerLauncher::setBusy(bool asking)
{
    m_parts.logon.setBusy(asking);
    emit busy(asking);
}

void BrokerLauncher::cancelLogon()
{
    if (!m_manager.isBusy())
        return;
    m_manager.abandon();
    setBusy(false);
}

/// Says what is missing for a log-on by hand; false when nothing is.
bool BrokerLauncher::complain()
{
    const bool noBroker = m_parts.logon.broker().isEmpty();
    if (!noBroker && !m_parts.logon.user().trimmed().isEmpty())
        return false;
    emit failed(noBroker ? tr("The address of the broker is missing.") : tr("The user name is missing."));
    m_parts.logon.focusFirst();
    return true;
}

bool BrokerLauncher::usesStoredLogon() const
{
    return autoLogonEnabled() && !m_parts.logon.hasTypedLogon();
}

void BrokerLauncher::on_loginSolvaButton_clicked()
{
    logOn(usesStoredLogon());
}

void BrokerLauncher::logOn(bool stored)
{
    if (m_manager.isBusy() || m_parts.session.isRunning() || (!stored && complain()))
        return;
    setSolvaDefaultProtocol();
    setBusy(true);
    const QJsonObject autoconnect = settings().value(Key::autoconnect).toObject();
    const QString desktop = autoconnect.value(Key::desktop).toString();
    if (stored) {
        const QJsonObject logon = section(Key::autologon);
        m_manager.setDesktop(desktop);
        m_manager.setAutoconnect(!desktop.isEmpty());
        m_manager.getSolvaServers(storedBroker(), logon.value(Key::username).toString(),
                                  logon.value(Key::password).toString(), logon.value(Key::domain).toString());
    } else {
        m_manager.setAutoconnect(false);
        m_manager.getSolvaServers(m_parts.logon.broker(), m_parts.logon.user(), m_parts.logon.password(),
                                  m_parts.logon.domain());
    }
}

void BrokerLauncher::solvaReply(const QString &reply)
{
    setBusy(false);
    if (reply != SolvaAccessManager::noError) {
        if (autoLogonEnabled())
            m_parts.autoLogon.showStopped();
        const QString text
            = reply == SolvaAccessManager::credentialsRefused ? tr("Invalid user credentials.") : reply;
        emit failed(tr("SOLVA Connection Broker error: ") + text);
        return;
    }
    // The box may have been typed into since.
    WindowSettings::addToHistory(&m_parts.configuration, Key::solvaBrokerHistory, m_manager.getAddress());
    loadConfiguration();
    m_parts.logon.showSignedIn(m_manager.getUser(), m_manager.getAddress());
    m_parts.desktops.setDesktops(m_manager.getDesktops(), m_manager.getDesktop());
    m_parts.desktops.setDesktopControlsEnabled(true);
    emit desktopsReady();
    if (m_manager.getAutoconnect())
        startSolvaConnection();
}

void BrokerLauncher::on_connectSolvaButton_clicked()
{
    const QString desktop = m_parts.desktops.selectedDesktop();
    if (desktop.isEmpty())
        return;
    m_manager.setDesktop(desktop);
    startSolvaConnection();
}

void BrokerLauncher::startSolvaConnection()
{
    m_manager.setProtocol(m_parts.desktops.protocol());
    m_parts.session.startBrokerClient(m_manager.getConnectionArguments(), m_manager.getDesktop());
}

void BrokerLauncher::on_logoutSolvaButton_clicked()
{
    cancelLogon();
    m_manager.setPassword(QString());
    m_parts.desktops.clear();
    m_parts.logon.showLogon();
    emit loggedOut();
}
