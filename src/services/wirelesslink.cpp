// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/wirelesslink.h"

#include "device/diagnostics.h"
#include "device/networkcontroller.h"

namespace {
const QString wlan0 = QStringLiteral("wlan0");
constexpr int fullSignal = 100;
} // namespace

WirelessLink::WirelessLink(NetworkController &network, const std::function<bool()> &isEnabled,
                           QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_isEnabled(isEnabled)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(pollMs);
    connect(&m_timer, &QTimer::timeout, this, &WirelessLink::poll);
}

LinkState WirelessLink::state() const
{
    return m_state;
}

void WirelessLink::setInterval(int milliseconds)
{
    m_timer.setInterval(milliseconds);
}

int WirelessLink::beginLook()
{
    m_timer.stop();
    return ++m_look;
}

template <typename Step>
auto WirelessLink::during(int look, const Step &step)
{
    return [this, look, step](const auto &...replies) {
        if (look == m_look)
            step(replies...);
    };
}

void WirelessLink::start()
{
    const int look = beginLook();
    m_network.isWifiConnected(this, during(look, [this, look](NetworkController::Reply connected) {
                                  const bool isConnected = connected.value_or(false);
                                  if (m_isEnabled())
                                      emit indicator(isConnected ? LinkImage::green : LinkImage::red);
                                  if (isConnected)
                                      setConnected(look);
                                  else
                                      lookForAccessPoint(look);
                              }));
}

void WirelessLink::lookForAccessPoint(int look)
{
    m_network.getActualWifi(this, during(look, [this](bool, const NetworkProperty &accessPoint) {
                                if (accessPoint.essid().isEmpty())
                                    setAbsent();
                                else
                                    setPresent();
                            }));
}

void WirelessLink::setPresent()
{
    m_state = LinkState::Present;
    emit status(LinkWord::link, fullSignal);
    emit iconShown(true);
    m_timer.start();
}

void WirelessLink::setConnected(int look)
{
    m_state = LinkState::Connected;
    read(look, [this](const NetworkProperty &property) {
        show(property);
        m_timer.start();
    });
}

void WirelessLink::setAbsent()
{
    m_state = LinkState::Absent;
    emit address(tr("Disconnected"), false);
    emit status(LinkWord::noLink, 0);
    emit iconShown(false);
}

void WirelessLink::read(int look, const std::function<void(const NetworkProperty &)> &done)
{
    m_network.getNetworkByInterface(wlan0, this, during(look, [=](bool, const NetworkProperty &parameters) {
                                        m_network.getActualWifi(
                                            this, during(look, [=](bool, const NetworkProperty &accessPoint) {
                                                NetworkProperty property = parameters;
                                                property.setEssid(accessPoint.essid());
                                                property.setSignalQuality(accessPoint.signalQuality());
                                                done(property);
                                            }));
                                    }));
}

void WirelessLink::show(const NetworkProperty &property)
{
    emit toolTip(property.ip() + QLatin1Char('\n') + property.essid() + QLatin1Char('\n')
                 + property.signalQuality() + QLatin1Char('%'));
    emit status(LinkWord::connected, property.signalQuality().toInt());
    emit iconShown(true);
    emit address(property.ip(), true);
}

void WirelessLink::poll()
{
    if (m_state == LinkState::Absent)
        return;
    read(beginLook(), [this](const NetworkProperty &property) {
        if (!property.ip().isEmpty() && !property.essid().isEmpty()) {
            if (m_state != LinkState::Connected)
                emit indicator(LinkImage::green);
            m_state = LinkState::Connected;
            show(property);
        }
        m_timer.start();
    });
}

void WirelessLink::followJoin(bool connected)
{
    const int look = beginLook();
    emit indicator(connected ? LinkImage::green : LinkImage::red);
    if (connected)
        setConnected(look);
    else
        setAbsent();
}

void WirelessLink::followLeft(bool turnedOffNow)
{
    followJoin(false);
    if (turnedOffNow)
        turnOff();
}

void WirelessLink::turnOff()
{
    beginLook();
    m_state = LinkState::Absent;
    emit iconShown(false);
    emit turnedOff();
}

void WirelessLink::followMessage(const QString &message)
{
    if (message == LinkWord::link) {
        Diagnostics::print(QStringLiteral("LINK_WIRELESS"));
        beginLook();
        setPresent();
    } else if (message == LinkWord::connected) {
        Diagnostics::print(QStringLiteral("CONNECTED_WIRELESS"));
        followJoin(true);
    } else if (message == LinkWord::noLink) {
        Diagnostics::print(QStringLiteral("DISCONNECTED_WIRELESS"));
        followJoin(false);
    }
}
