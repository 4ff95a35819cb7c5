// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/program.h"

#include "config/keys.h"

#include <QEvent>
#include <QTimer>

Program::Program()
    : m_configuration(QStringLiteral("config.json"), true)
    , m_network(m_commands)
    , m_networkStatus(m_network, m_configuration)
    , m_applier(m_configuration, m_commands, m_network, m_resolutions)
    , m_startDocument(m_configuration, m_network, m_applier)
    , m_endpoint(m_status)
    , m_session(m_configuration)
    , m_updates(m_update, m_endpoint, m_session)
    , m_power(m_update)
    , m_agent(m_configuration, m_status)
    , m_window({m_configuration, m_session, m_updates, m_power})
    , m_remote(m_configuration,
               {[this] { return !m_update.ifUpdateIdle() && !m_update.ifSessionConnected(); },
                [this] {
                    return m_update.ifSessionConnected();
                }})
    , m_controller(&m_window,
                   {m_configuration, m_network, m_networkStatus, m_resolutions, m_audio, m_remote, m_applier,
                    m_startDocument})
{
    connectEndpoint();
    connectSession();
    connectAgent();
    connectApplier();
    connect(&m_configuration, &JsonModule::changed, this, &Program::followDocument);
    connect(&m_startDocument, &StartDocument::replaced, this, &Program::followDocument);
    connect(&m_startDocument, &StartDocument::replaced, &m_agent, &AgentService::handleMerged);
}

Program::~Program() = default;

void Program::connectEndpoint()
{
    using Endpoint = TerminalServerModule;
    connect(&m_window, &SettingsApp::refreshServerList, &m_endpoint, &Endpoint::findTerminalServer);
    connect(&m_endpoint, &Endpoint::sendServerList, &m_window, &SettingsApp::setServerList);
    connect(&m_endpoint, &Endpoint::check_resetPossible, &m_power, &PowerService::checkResetPossible);
    connect(&m_endpoint, &Endpoint::ask_resetDevice, &m_power, &PowerService::resetDevice);
    connect(&m_endpoint, &Endpoint::saveConfiguration, &m_remote, &RemoteConfiguration::mergeRemoteConfig);
    connect(&m_endpoint, &Endpoint::applyConfig, &m_applier, &SettingsApplier::follow);
}

void Program::connectSession()
{
    connect(&m_session, &SessionService::getProxyParameters, &m_controller,
            &SettingsController::fillProxyParameters);
    connect(&m_session, &SessionService::secondaryMonitorParameters, &m_controller,
            &SettingsController::fillSecondaryParameter);
}

void Program::connectAgent()
{
    using Agent = AgentService;
    connect(&m_agent, &Agent::firmwareUpdateURL, &m_updates, &UpdateService::on_updateByURL);
    connect(&m_agent, &Agent::check_resetPossible, &m_power, &PowerService::checkResetPossible);
    connect(&m_agent, &Agent::ask_resetDevice, &m_power, &PowerService::resetDevice);
    connect(&m_agent, &Agent::mergeRemoteConfig, &m_remote, &RemoteConfiguration::mergeRemoteConfig);
    connect(&m_agent, &Agent::applyConfig, &m_applier, &SettingsApplier::follow);
    connect(&m_remote, &RemoteConfiguration::configurationMerged, &m_agent, &Agent::handleMerged);
    connect(&m_controller, &SettingsController::settingsApplied, &m_agent, &Agent::handleApplied);
    connect(&m_networkStatus, &NetworkStatus::wiredStatus, &m_agent, &Agent::handleNetworkStatus);
    connect(&m_networkStatus, &NetworkStatus::wirelessStatus, &m_agent, &Agent::handleNetworkStatus);
    m_window.installEventFilter(this);
}

void Program::connectApplier()
{
    // A network that is connected anew would end an update as well as a session.
    m_applier.setSessionCheck([this] { return !m_update.ifUpdateIdle(); });
    connect(&m_session, &SessionService::ended, &m_applier, &SettingsApplier::follow);
    connect(&m_updates, &UpdateService::powerLocked, &m_power, &PowerService::setLocked);
    connect(&m_updates, &UpdateService::closed, &m_applier, &SettingsApplier::follow);
    connect(&m_applier, &SettingsApplier::busy, &m_window, &SettingsApp::showProgress);
    connect(&m_applier, &SettingsApplier::wiredApplied, &m_networkStatus, &NetworkStatus::takeWiredApplied);
    connect(&m_applier, &SettingsApplier::wirelessLeft, &m_networkStatus, &NetworkStatus::takeWirelessLeft);
}

void Program::start()
{
    m_controller.start();
    followDocument();
    m_agent.start();
}

/// What of the program itself obeys the document.
void Program::followDocument()
{
    const QJsonObject management = m_configuration.getDocument().object().value(Key::management).toObject();
    // While the document cannot be read, nobody knows whether consoles are allowed.
    m_endpoint.enableComunication(management.value(Key::consoleManagement).toBool()
                                  && !m_configuration.isProvisional());
}

bool Program::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        m_agent.handleFirstPaint();
        // The filter sees the event before the window does.
        QTimer::singleShot(0, &m_serviceNotifier, &ServiceNotifier::notifyReady);
    }
    return false;
}

SettingsApp &Program::window()
{
    return m_window;
}

SettingsController &Program::controller()
{
    return m_controller;
}

JsonModule &Program::configuration()
{
    return m_configuration;
}

NetworkStatus &Program::networkStatus()
{
    return m_networkStatus;
}

TerminalServerModule &Program::endpoint()
{
    return m_endpoint;
}

UpdateModule &Program::updateModule()
{
    return m_update;
}

SessionService &Program::session()
{
    return m_session;
}

UpdateService &Program::updates()
{
    return m_updates;
}

RemoteConfiguration &Program::remoteConfiguration()
{
    return m_remote;
}

AudioController &Program::audio()
{
    return m_audio;
}

StartDocument &Program::startDocument()
{
    return m_startDocument;
}

SettingsApplier &Program::applier()
{
    return m_applier;
}

AgentService &Program::agent()
{
    return m_agent;
}
