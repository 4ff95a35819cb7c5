// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/agentfeed.h"

#include "app/settingsapp.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/identity.h"
#include "management/deviceagent.h"
#include "management/qmdaddress.h"

#include <QEvent>

AgentFeed::AgentFeed(SettingsApp &window, JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_configuration(configuration)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &AgentFeed::feed);
    window.installEventFilter(this);
}

bool AgentFeed::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        m_turn.start(0);
    }
    return false;
}

void AgentFeed::takeApplied()
{
    m_applied = true;
    m_turn.start(0);
}

void AgentFeed::takeMerged()
{
    if (text() != m_fed)
        m_turn.start(0);
}

void AgentFeed::feed()
{
    const QByteArray configuration = text();
    const bool upload = m_applied || configuration != m_fed;
    m_applied = false;
    m_fed = configuration;
    const QJsonObject management = m_configuration.getDocument().object().value(Key::management).toObject();
    DeviceAgent &agent = m_window.deviceAgent();
    agent.enableComunication(management.value(Key::qmdManagement).toBool());
    agent.setURL(QUrl(QmdAddress::url(management)));
    agent.setDeviceSerial(Identity::serialNumber());
    agent.setConfiguration(configuration);
    agent.checkProxy();
    // A check-in brings the configuration along.
    if (!agent.initConnection() && upload)
        agent.putConfiguration();
}

/// The sound devices are this device's own affair.
QByteArray AgentFeed::text() const
{
    QJsonObject root = m_configuration.getDocument().object();
    root.remove(Key::audio);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}
