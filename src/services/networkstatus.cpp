// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/networkstatus.h"

#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/commands.h"
#include "device/diagnostics.h"
#include "device/networkcontroller.h"
#include "device/paths.h"

#include <QHostAddress>
#include <QTime>

namespace {

const QString eth0 = QStringLiteral("eth0");
const QString wlan0 = QStringLiteral("wlan0");

const QString linkWord = QStringLiteral("link");
const QString connectedWord = QStringLiteral("connected");
const QString noLinkWord = QStringLiteral("no link");

const QString green = QStringLiteral(":/images/network_indicator_green.png");
const QString red = QStringLiteral(":/images/network_indicator_red.png");

constexpr int fullSignal = 100;

} // namespace

NetworkStatus::NetworkStatus(NetworkController &network, JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_configuration(configuration)
{
    connect(&m_statusTimer, &QTimer::timeout, this, &NetworkStatus::updateNetworkStatus);
    connect(&m_cableWatchTimer, &QTimer::timeout, this, &NetworkStatus::checkEthernetPlugged);
    connect(&m_reconnectTimer, &QTimer::timeout, this, &NetworkStatus::reconnectEthernet);
    connect(&m_network, &NetworkController::setWifiStatus, this, &NetworkStatus::setWifiStatus);
    remember();
}

void NetworkStatus::remember()
{
    connect(this, &NetworkStatus::ethernetAddress, this, [this](const QString &text, bool enabled) {
        m_ethernetAddress = {text, enabled};
    });
    connect(this, &NetworkStatus::wifiAddress, this, [this](const QString &text, bool enabled) {
        m_wifiAddress = {text, enabled};
    });
    connect(this, &NetworkStatus::ethernetIndicator, this,
            [this](const QString &image) { m_ethernetIndicator = image; });
    connect(this, &NetworkStatus::wifiIndicator, this,
            [this](const QString &image) { m_wifiIndicator = image; });
}

void NetworkStatus::sayAgain()
{
    // By value: whoever hears a signal may make another be sent.
    const Address ethernet = m_ethernetAddress;
    const Address wifi = m_wifiAddress;
    emit ethernetAddress(ethernet.text, ethernet.enabled);
    emit wifiAddress(wifi.text, wifi.enabled);
    emit ethernetIndicator(m_ethernetIndicator.isEmpty() ? red : m_ethernetIndicator);
    emit wifiIndicator(m_wifiIndicator.isEmpty() ? red : m_wifiIndicator);
}

NetworkStatus::Link NetworkStatus::wiredState() const
{
    return m_wiredState;
}

NetworkStatus::Link NetworkStatus::wirelessState() const
{
    return m_wirelessState;
}

void NetworkStatus::initNetworkStatus()
{
    const QString wired = m_network.isEthernetConnected() ? connectedWord : noLinkWord;
    QString wireless = connectedWord;
    if (!m_network.isWifiConnected()) {
        NetworkProperty accessPoint;
        m_network.getActualWifi(accessPoint);
        wireless = accessPoint.essid().isEmpty() ? noLinkWord : linkWord;
    }
    applyWireless(wireless);
    applyWired(wired);
}

void NetworkStatus::applyWireless(const QString &word)
{
    if (word == linkWord) {
        emit wirelessStatus(linkWord, fullSignal);
        emit wirelessIconShown(true);
        m_wirelessState = Link::Present;
    } else if (word == connectedWord) {
        showWireless(readWireless());
        m_wirelessState = Link::Connected;
        m_statusTimer.start(pollMs);
    } else {
        showWirelessAbsent();
    }
}

void NetworkStatus::applyWired(const QString &word)
{
    if (word == linkWord) {
        emit wiredStatus(linkWord);
        emit wiredIconShown(true);
        m_wiredState = Link::Present;
        m_statusTimer.start(pollMs);
    } else if (word == connectedWord) {
        emit wiredIconShown(true);
        // An address that the interface has got by now is not overlaid with the one it had.
        if (showWiredConnected())
            m_pluggedCorrect = false;
        m_wiredState = Link::Connected;
        m_cableWatchTimer.start(firstCableCheckMs);
    } else {
        emit wiredToolTip(QString());
        emit wiredIconShown(false);
        emit ethernetAddress(QString(), false);
        m_wiredState = Link::Absent;
    }
}

NetworkProperty NetworkStatus::readWireless()
{
    NetworkProperty property;
    m_network.getNetworkByInterface(wlan0, property);
    m_network.getActualWifi(property);
    return property;
}

void NetworkStatus::showWireless(const NetworkProperty &property)
{
    emit wirelessToolTip(property.ip() + QLatin1Char('\n') + property.essid() + QLatin1Char('\n')
                         + property.signalQuality() + QLatin1Char('%'));
    emit wirelessStatus(connectedWord, property.signalQuality().toInt());
    emit wirelessIconShown(true);
    emit wifiAddress(property.ip(), true);
}

void NetworkStatus::showWirelessAbsent()
{
    emit wifiAddress(tr("Disconnected"), false);
    emit wirelessStatus(noLinkWord, 0);
    emit wirelessIconShown(false);
    m_wirelessState = Link::Absent;
}

bool NetworkStatus::showWiredConnected()
{
    NetworkProperty property;
    m_network.getNetworkByInterface(eth0, property);
    emit wiredToolTip(property.ip());
    emit wiredStatus(connectedWord);
    emit ethernetAddress(property.ip(), true);
    return !property.ip().isEmpty();
}

void NetworkStatus::updateNetworkStatus()
{
    m_statusTimer.stop();
    if (m_wirelessState != Link::Absent) {
        const NetworkProperty property = readWireless();
        if (!property.ip().isEmpty() && !property.essid().isEmpty()) {
            m_wirelessState = Link::Connected;
            showWireless(property);
        }
    }
    if (m_wiredState != Link::Present)
        m_statusTimer.start(pollMs);
}

void NetworkStatus::checkEthernetPlugged()
{
    m_cableWatchTimer.stop();
    if (m_wiredState == Link::Absent)
        return;
    if (m_network.CheckWiredPlugged())
        cablePresent();
    else
        cableAbsent();
    m_cableWatchTimer.start(cableWatchMs);
}

void NetworkStatus::cablePresent()
{
    emit ethernetIndicator(green);
    if (m_wiredState == Link::Present) {
        emit wiredStatus(linkWord);
        m_statusTimer.start(pollMs);
        return;
    }
    if (m_pluggedCorrect)
        putAddressBack();
    m_network.afterCommands(this, [this] { showCable(); });
}

void NetworkStatus::showCable()
{
    showWiredConnected();
    if (m_checkGroupList) {
        m_checkGroupList = false;
        emit serverGroupsAffected();
    }
}

void NetworkStatus::putAddressBack()
{
    if (!m_configuredIpAddress.isEmpty())
        m_network.setIpConfigure(eth0, m_configuredIpAddress, m_configuredPrefix, true,
                                 m_configuredBroadcastAddress);
    m_network.setRoutingTable();
    m_pluggedCorrect = false;
}

void NetworkStatus::cableAbsent()
{
    if (!m_pluggedCorrect)
        takeAddressOff();
    m_checkGroupList = true;
    emit ethernetIndicator(red);
    emit wiredStatus(noLinkWord);
    emit ethernetAddress(tr("Disconnected"), false);
}

void NetworkStatus::takeAddressOff()
{
    NetworkProperty property;
    m_network.getNetworkByInterface(eth0, property);
    m_configuredIpAddress = property.ip();
    m_configuredBroadcastAddress = QHostAddress(property.broadcast()).toString();
    m_configuredPrefix = property.prefixLength();
    const QString line = QStringLiteral("%1:::%2<2>")
                             .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")),
                                  m_configuredBroadcastAddress);
    Commands::runShell(
        QStringLiteral("echo \"%1\" >> %2").arg(line, Commands::quoted(Paths::broadcastLog())));
    m_pluggedCorrect = true;
    if (m_configuredIpAddress.isEmpty())
        return;
    m_network.setIpConfigure(eth0, m_configuredIpAddress, m_configuredPrefix, false, QString());
    emit serverGroupsAffected();
}

void NetworkStatus::reconnectEthernet()
{
    m_reconnectTimer.stop();
    if (!m_network.CheckWiredPlugged()) {
        m_reconnectTimer.start(reconnectMs);
        return;
    }
    m_network.setNetworkConfig();
    m_network.disconnect();
    m_network.connectWired();
    m_network.afterCommands(this, [this] { m_cableWatchTimer.start(cableWatchMs); });
}

void NetworkStatus::checkPluggedEthernet()
{
    m_reconnectTimer.stop();
    if (m_network.CheckWiredPlugged()) {
        emit ethernetIndicator(green);
        return;
    }
    emit wiredStatus(noLinkWord);
    emit ethernetAddress(tr("Disconnected"), false);
    m_reconnectTimer.start(reconnectMs);
}

bool NetworkStatus::isEnabled(QLatin1String interface) const
{
    const QJsonObject network = m_configuration.getDocument().object().value(Key::network).toObject();
    const QJsonObject interfaces = network.value(Key::interfaces).toObject();
    return interfaces.value(interface).toObject().value(Key::enabled).toBool();
}

void NetworkStatus::initNetworkIcons()
{
    if (isEnabled(Key::wlan))
        emit wifiIndicator(m_network.isWifiConnected() ? green : red);
    if (isEnabled(Key::eth))
        emit ethernetIndicator(m_network.CheckWiredPlugged() ? green : red);
}

void NetworkStatus::setWifiStatus(bool connected)
{
    if (!connected) {
        showWirelessAbsent();
        emit wifiIndicator(red);
        return;
    }
    showWireless(readWireless());
    emit wifiIndicator(green);
    m_wirelessState = Link::Connected;
    m_statusTimer.start(pollMs);
}

void NetworkStatus::takeApplied()
{
    takeWiredApplied(isEnabled(Key::eth));
    if (!isEnabled(Key::wlan))
        takeWirelessLeft(true);
}

void NetworkStatus::takeWiredApplied(bool enabled)
{
    m_reconnectTimer.stop();
    m_cableWatchTimer.stop();
    m_pluggedCorrect = false; // the address that was taken off is not the one to put back
    if (!enabled) {
        applyWired(noLinkWord);
        emit ethernetIndicator(red);
        return;
    }
    const bool plugged = m_network.CheckWiredPlugged();
    if (plugged) {
        applyWired(m_network.isEthernetConnected() ? connectedWord : linkWord);
        emit ethernetIndicator(green);
    } else {
        emit wiredIconShown(true);
        m_wiredState = Link::Connected; // as soon as the cable is back
        checkPluggedEthernet();
    }
    m_cableWatchTimer.start(cableWatchMs);
}

void NetworkStatus::takeWirelessLeft(bool turnedOff)
{
    setWifiStatus(false);
    if (turnedOff)
        turnOffWifi();
}

void NetworkStatus::turnOffWifi()
{
    m_wirelessState = Link::Absent;
    emit wirelessIconShown(false);
    emit wifiTurnedOff();
}

void NetworkStatus::takeMessage(const QString &interface, const QString &message)
{
    if (interface == eth0)
        takeWiredMessage(message);
    else if (interface == wlan0)
        takeWirelessMessage(message);
}

void NetworkStatus::takeWiredMessage(const QString &message)
{
    if (message == linkWord) {
        Diagnostics::print(QStringLiteral("LINK_WIRED"));
        applyWired(linkWord);
    } else if (message == connectedWord) {
        Diagnostics::print(QStringLiteral("CONNECTED_WIRED"));
        applyWired(connectedWord);
        emit ethernetIndicator(green);
        emit serverGroupsAffected();
    } else if (message == noLinkWord) {
        // The state stays: it says what comes back with the cable.
        Diagnostics::print(QStringLiteral("DISCONNECTED_WIRED"));
        emit wiredStatus(noLinkWord);
        emit ethernetIndicator(red);
        emit ethernetAddress(tr("Disconnected"), false);
    }
}

void NetworkStatus::takeWirelessMessage(const QString &message)
{
    if (message == linkWord) {
        Diagnostics::print(QStringLiteral("LINK_WIRELESS"));
        applyWireless(linkWord);
        m_statusTimer.start(pollMs);
    } else if (message == connectedWord) {
        Diagnostics::print(QStringLiteral("CONNECTED_WIRELESS"));
        setWifiStatus(true);
    } else if (message == noLinkWord) {
        Diagnostics::print(QStringLiteral("DISCONNECTED_WIRELESS"));
        setWifiStatus(false);
    }
}
