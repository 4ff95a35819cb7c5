// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/agentservice.h"

#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/identity.h"
#include "management/deviceagent.h"
#include "management/messagedispatcher.h"
#include "management/qmdaddress.h"

namespace {
/// A window that is covered, or on a screen that is off, is never painted.
constexpr int unpaintedMs = 3000;
} // namespace

AgentService::AgentService(JsonModule &configuration, DeviceStatus &status, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_status(status)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &AgentService::feed);
}

AgentService::~AgentService() = default;

void AgentService::start()
{
    m_turn.start(unpaintedMs);
}

void AgentService::handleFirstPaint()
{
    m_turn.start(0);
}

DeviceAgent &AgentService::agent()
{
    if (!m_agent) {
        m_agent = std::make_unique<DeviceAgent>(m_status);
        connectDispatcher(m_agent->dispatcher());
    }
    return *m_agent;
}

void AgentService::connectDispatcher(MessageDispatcher &dispatcher)
{
    using Dispatcher = MessageDispatcher;
    connect(&dispatcher, &Dispatcher::firmwareUpdateURL, this, &AgentService::firmwareUpdateURL);
    connect(&dispatcher, &Dispatcher::check_resetPossible, this, &AgentService::check_resetPossible);
    connect(&dispatcher, &Dispatcher::ask_resetDevice, this, &AgentService::reset);
    connect(&dispatcher, &Dispatcher::applyConfig, this, &AgentService::applyConfig);
    // The server expects the device to follow a document at once.
    connect(&dispatcher, &Dispatcher::mergeRemoteConfig, this,
            [this](const QJsonObject &remote, int *result) {
                emit mergeRemoteConfig(remote, result);
                if (*result == 0)
                    emit applyConfig();
            });
}

/// Only the first request of a list causes a reset: each starts the tool.
void AgentService::reset()
{
    if (m_resetRequested)
        return;
    m_resetRequested = true;
    QTimer::singleShot(0, this, [this] { m_resetRequested = false; });
    emit ask_resetDevice();
}

void AgentService::handleApplied()
{
    m_applied = true;
    m_turn.start(0);
}

void AgentService::handleMerged()
{
    if (text() != m_fed)
        m_turn.start(0);
}

void AgentService::handleNetworkStatus()
{
    // An offer that is gone was made by a network that may come back.
    const bool wanted = !m_url.isEmpty() && management().value(Key::qmdManagement).toBool();
    if (wanted && url() != m_url && RestClient::isSupported(QUrl(url())))
        m_turn.start(0);
}

void AgentService::feed()
{
    // What stands in for a document that cannot be read concerns no server.
    if (m_configuration.isProvisional())
        return;
    const QByteArray configuration = text();
    const bool upload = m_applied || configuration != m_fed;
    m_applied = false;
    m_fed = configuration;
    m_url = url();
    DeviceAgent &agent = this->agent();
    agent.enableComunication(management().value(Key::qmdManagement).toBool());
    agent.setURL(QUrl(m_url));
    agent.setDeviceSerial(Identity::serialNumber());
    agent.setConfiguration(configuration);
    agent.checkProxy();
    // A check-in brings the configuration along.
    if (!agent.initConnection() && upload)
        agent.putConfiguration();
}

QJsonObject AgentService::management() const
{
    return m_configuration.getDocument().object().value(Key::management).toObject();
}

QString AgentService::url() const
{
    return QmdAddress::url(management());
}

/// The sound devices are this device's own affair.
QByteArray AgentService::text() const
{
    QJsonObject root = m_configuration.getDocument().object();
    root.remove(Key::audio);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}
