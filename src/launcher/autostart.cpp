// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/autostart.h"

#include "launcher/autoconnectpage.h"
#include "launcher/brokerlauncher.h"
#include "launcher/servergroups.h"
#include "config/keys.h"

#include <QJsonArray>

#include <utility>

AutoStart::AutoStart(const Parts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    for (AutoConnectPage *page : {&m_parts.connectPage, &m_parts.logonPage})
        connect(page, &AutoConnectPage::cancelled, this, &AutoStart::cancel);
}

void AutoStart::load(const QJsonObject &root)
{
    const QJsonObject settings = root.value(Key::connection)
                                     .toObject()
                                     .value(Key::corvidConnection)
                                     .toObject()
                                     .value(Key::autoconnect)
                                     .toObject();
    const bool connects = settings.value(Key::enabled).toBool();
    if (std::exchange(m_connects, connects) != connects)
        m_cancelled = false;
    m_target = ServerGroups::autoConnectTarget(settings, root.value(Key::serverGroups).toArray());
}

bool AutoStart::connects() const
{
    return m_connects;
}

const ConnectTarget &AutoStart::target() const
{
    return m_target;
}

AutoStart::Kind AutoStart::due(const QString &clientMode) const
{
    if (m_cancelled || clientMode == QLatin1String("rdp"))
        return Kind::None;
    if (clientMode == QLatin1String("solva"))
        return m_parts.broker.autoLogonEnabled() ? Kind::LogOn : Kind::None;
    return m_connects ? Kind::Connect : Kind::None;
}

void AutoStart::count(Kind kind)
{
    m_paused = nullptr;
    if (kind == Kind::Connect)
        m_parts.connectPage.startAutoConnect(m_target);
    else
        m_parts.connectPage.stop();
    if (kind == Kind::LogOn)
        m_parts.broker.startSolvaAutoLogon();
    else
        m_parts.logonPage.stop();
}

void AutoStart::pause()
{
    for (AutoConnectPage *page : {&m_parts.connectPage, &m_parts.logonPage}) {
        if (page->countdown().isRunning())
            m_paused = &page->countdown();
    }
    if (m_paused)
        m_paused->stop();
}

void AutoStart::resume()
{
    if (Countdown *paused = std::exchange(m_paused, nullptr))
        paused->resume();
}

void AutoStart::stop()
{
    m_paused = nullptr;
    for (AutoConnectPage *page : {&m_parts.connectPage, &m_parts.logonPage})
        page->showStopped();
    m_parts.broker.cancelLogon();
}

void AutoStart::cancel()
{
    m_cancelled = true;
}

void AutoStart::forgetCancel()
{
    m_cancelled = false;
}
