// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/agentfeed.h"

#include "launcher/settingsapp.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/identity.h"
#include "management/deviceagent.h"
#include "management/qmdaddress.h"

#include <QEvent>

namespace {
/// A window that is covered, or on a screen that is off, is never painted.
constexpr int unpaintedMs = 3000;
} // namespace

AgentFeed::AgentFeed(SettingsApp &window, JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_configuration(configuration)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &AgentFeed::feed);
    window.installEventFilter(this);
    QTimer::singleShot(0, this, [this] {
        if (m_url.isEmpty() && !m_turn.isActive())
            m_turn.start(unpaintedMs);
    });
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

void AgentFeed::takeNetworkStatus()
{
    // An offer that is gone was made by a network that may come back.
    const bool wanted = !m_url.isEmpty() && management().value(Key::qmdManagement).toBool();
    if (wanted && url() != m_url && RestClient::isSupported(QUrl(url())))
        m_turn.start(0);
}

void AgentFeed::feed()
{
    const QByteArray configuration = text();
    const bool upload = m_applied || configuration != m_fed;
    m_applied = false;
    m_fed = configuration;
    m_url = url();
    DeviceAgent &agent = m_window.deviceAgent();
    agent.enableComunication(management().value(Key::qmdManagement).toBool());
    agent.setURL(QUrl(m_url));
    agent.setDeviceSerial(Identity::serialNumber());
    agent.setConfiguration(configuration);
    agent.checkProxy();
    // A check-in brings the configuration along.
    if (!agent.initConnection() && upload)
        agent.putConfiguration();
}

QJsonObject AgentFeed::management() const
{
    return m_configuration.getDocument().object().value(Key::management).toObject();
}

QString AgentFeed::url() const
{
    return QmdAddress::url(management());
}

/// The sound devices are this device's own affair.
QByteArray AgentFeed::text() const
{
    QJsonObject root = m_configuration.getDocument().object();
    root.remove(Key::audio);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}
