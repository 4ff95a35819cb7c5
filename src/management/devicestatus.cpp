// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/devicestatus.h"

#include <utility>

DeviceStatus::DeviceStatus(QObject *parent)
    : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(Commands::timeLimitMs);
    connect(&m_limit, &QTimer::timeout, this, &DeviceStatus::finish);
}

void DeviceStatus::request(QObject *context, const Done &done)
{
    if (m_age.isValid() && !m_age.hasExpired(freshMs)) {
        done(JSONStatus(m_facts));
        return;
    }
    m_waiting.push_back({context, done});
    if (m_waiting.size() == 1)
        gather();
}

void DeviceStatus::gather()
{
    m_gathered = InterfaceFacts();
    m_missing = 2;
    ++m_look;
    m_limit.start();
    read(QStringLiteral("eth0"), &InterfaceFacts::wired);
    read(QStringLiteral("wlan0"), &InterfaceFacts::wireless);
}

void DeviceStatus::read(const QString &interface, NetworkProperty InterfaceFacts::*property)
{
    const int look = m_look;
    m_network.getNetworkByInterface(interface, this,
                                    [this, look, property](bool, const NetworkProperty &found) {
                                        if (look != m_look || !m_limit.isActive())
                                            return;
                                        m_gathered.*property = found;
                                        if (--m_missing == 0)
                                            finish();
                                    });
}

void DeviceStatus::finish()
{
    m_limit.stop();
    m_facts = m_gathered;
    m_age.start();
    const JSONStatus status(m_facts);
    for (const Waiter &waiter : std::exchange(m_waiting, {})) {
        if (waiter.context)
            waiter.done(status);
    }
}
