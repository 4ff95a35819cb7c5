// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/networkstatus.h"

#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/networkcontroller.h"

namespace {
const QString eth0 = QStringLiteral("eth0");
const QString wlan0 = QStringLiteral("wlan0");
} // namespace

NetworkStatus::NetworkStatus(NetworkController &network, JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_wired(network, [this] { return isEnabled(Key::eth); })
    , m_wireless(network, [this] { return isEnabled(Key::wlan); })
{
    connect(&network, &NetworkController::setWifiStatus, this, &NetworkStatus::setWifiStatus);
    passOn();
    remember();
}

void NetworkStatus::passOn()
{
    connect(&m_wired, &WiredLink::status, this, &NetworkStatus::wiredStatus);
    connect(&m_wired, &WiredLink::iconShown, this, &NetworkStatus::wiredIconShown);
    connect(&m_wired, &WiredLink::toolTip, this, &NetworkStatus::wiredToolTip);
    connect(&m_wired, &WiredLink::address, this, &NetworkStatus::ethernetAddress);
    connect(&m_wired, &WiredLink::indicator, this, &NetworkStatus::ethernetIndicator);
    connect(&m_wired, &WiredLink::serverGroupsAffected, this, &NetworkStatus::serverGroupsAffected);
    connect(&m_wireless, &WirelessLink::status, this, &NetworkStatus::wirelessStatus);
    connect(&m_wireless, &WirelessLink::iconShown, this, &NetworkStatus::wirelessIconShown);
    connect(&m_wireless, &WirelessLink::toolTip, this, &NetworkStatus::wirelessToolTip);
    connect(&m_wireless, &WirelessLink::address, this, &NetworkStatus::wifiAddress);
    connect(&m_wireless, &WirelessLink::indicator, this, &NetworkStatus::wifiIndicator);
    connect(&m_wireless, &WirelessLink::turnedOff, this, &NetworkStatus::wifiTurnedOff);
}

void NetworkStatus::remember()
{
    connect(this, &NetworkStatus::ethernetAddress, this, [this](const QString &text, bool enabled) {
        m_ethernetAddress = {text, enabled};
        compare(m_lastEthernet, m_ethernetAddress);
    });
    connect(this, &NetworkStatus::wifiAddress, this, [this](const QString &text, bool enabled) {
        m_wifiAddress = {text, enabled};
        compare(m_lastWifi, m_wifiAddress);
    });
    connect(this, &NetworkStatus::ethernetIndicator, this,
            [this](const QString &image) { m_ethernetIndicator = image; });
    connect(this, &NetworkStatus::wifiIndicator, this,
            [this](const QString &image) { m_wifiIndicator = image; });
}

/// What an interface has at the start of the program is no change, nor is an address that comes back.
void NetworkStatus::compare(std::optional<QString> &last, const Address &present)
{
    const bool isKnown = last.has_value();
    if (!isKnown)
        last = QString();
    if (!present.enabled || present.text.isEmpty() || *last == present.text)
        return;
    last = present.text;
    if (isKnown)
        emit addressChanged();
}

void NetworkStatus::sayAgain()
{
    // By value: a receiver may cause another signal.
    const Address ethernet = m_ethernetAddress;
    const Address wifi = m_wifiAddress;
    const QString ethernetImage = m_ethernetIndicator;
    const QString wifiImage = m_wifiIndicator;
    emit ethernetAddress(ethernet.text, ethernet.enabled);
    emit wifiAddress(wifi.text, wifi.enabled);
    emit ethernetIndicator(ethernetImage);
    emit wifiIndicator(wifiImage);
}

NetworkStatus::Link NetworkStatus::wiredState() const
{
    return m_wired.state();
}

NetworkStatus::Link NetworkStatus::wirelessState() const
{
    return m_wireless.state();
}

bool NetworkStatus::isConnected(const QString &interface) const
{
    if (interface == wlan0)
        return m_wireless.state() == Link::Connected;
    return interface == eth0 && m_wired.isConnected();
}

void NetworkStatus::setInterval(int milliseconds)
{
    m_wired.setInterval(milliseconds);
    m_wireless.setInterval(milliseconds);
}

void NetworkStatus::initNetworkStatus()
{
    m_wired.start();
    m_wireless.start();
}

void NetworkStatus::takeMessage(const QString &interface, const QString &message)
{
    if (interface == eth0)
        m_wired.followMessage(message);
    else if (interface == wlan0)
        m_wireless.followMessage(message);
}

bool NetworkStatus::isEnabled(QLatin1String interface) const
{
    const QJsonObject network = m_configuration.getDocument().object().value(Key::network).toObject();
    const QJsonObject interfaces = network.value(Key::interfaces).toObject();
    return interfaces.value(interface).toObject().value(Key::enabled).toBool();
}

void NetworkStatus::takeApplied()
{
    takeWiredApplied(isEnabled(Key::eth));
    if (isEnabled(Key::wlan))
        m_wireless.start();
    else
        takeWirelessLeft(true);
}

void NetworkStatus::takeWiredApplied(bool enabled)
{
    m_wired.followApplied(enabled);
}

void NetworkStatus::takeWirelessLeft(bool turnedOff)
{
    m_wireless.followLeft(turnedOff);
}

void NetworkStatus::setWifiStatus(bool connected)
{
    m_wireless.followJoin(connected);
}

void NetworkStatus::turnOffWifi()
{
    m_wireless.turnOff();
}

void NetworkStatus::updateNetworkStatus()
{
    m_wireless.poll();
}

void NetworkStatus::checkEthernetPlugged()
{
    m_wired.watchCable();
}

void NetworkStatus::reconnectEthernet()
{
    m_wired.awaitCable();
}
