// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/wiredlink.h"

#include "device/diagnostics.h"
#include "device/networkcontroller.h"

#include <QHostAddress>
#include <QTime>

#include <utility>

namespace {
const QString eth0 = QStringLiteral("eth0");
} // namespace

WiredLink::WiredLink(NetworkController &network, const std::function<bool()> &isEnabled, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_isEnabled(isEnabled)
{
    for (QTimer *timer : {&m_watchTimer, &m_reconnectTimer})
        timer->setSingleShot(true);
    connect(&m_watchTimer, &QTimer::timeout, this, &WiredLink::watchCable);
    connect(&m_reconnectTimer, &QTimer::timeout, this, &WiredLink::awaitCable);
}

LinkState WiredLink::state() const
{
    return m_state;
}

bool WiredLink::isConnected() const
{
    return m_state == LinkState::Connected && !m_isAddressOff;
}

void WiredLink::setInterval(int milliseconds)
{
    m_intervalMs = milliseconds;
}

void WiredLink::schedule(QTimer &timer, int milliseconds)
{
    if (m_isEnabled())
        timer.start(m_intervalMs > 0 ? m_intervalMs : milliseconds);
}

int WiredLink::beginLook()
{
    m_watchTimer.stop();
    m_reconnectTimer.stop();
    return ++m_look;
}

template <typename Step>
auto WiredLink::during(int look, const Step &step)
{
    return [this, look, step](const auto &...replies) {
        if (look == m_look)
            step(replies...);
    };
}

void WiredLink::start()
{
    if (!m_isEnabled()) {
        showUnused();
        return;
    }
    // Taken off before the program's end.
    if (const std::optional<TakenAddress> taken = TakenAddress::load()) {
        m_taken = *taken;
        m_isAddressOff = true;
    }
    evaluate();
}

void WiredLink::followApplied(bool enabled)
{
    forgetAddress(); // what was taken off is not what to put back
    if (enabled) {
        evaluate();
        return;
    }
    showUnused();
    emit indicator(LinkImage::red);
}

/// Finds out what an enabled interface has.
void WiredLink::evaluate()
{
    const int look = beginLook();
    m_isUnsure = false;
    m_network.isEthernetConnected(this, during(look, [this, look](NetworkController::Reply connected) {
                                      m_network.CheckWiredPlugged(
                                          this, during(look, [=](NetworkController::Reply plugged) {
                                              settle(look, connected.value_or(false), plugged);
                                          }));
                                  }));
}

void WiredLink::settle(int look, bool connected, std::optional<bool> plugged)
{
    if (!plugged.value_or(connected)) {
        waitForCable();
        if (connected)
            takeAddressOff(beginLook(), [this] { schedule(m_reconnectTimer, reconnectMs); });
        return;
    }
    m_isWaiting = false;
    emit iconShown(true);
    emit indicator(LinkImage::green);
    if (!connected && m_isAddressOff) {
        m_state = LinkState::Connected;
        cablePresent(look);
        return;
    }
    if (!connected) {
        showLink();
        schedule(m_watchTimer, cableWatchMs);
        return;
    }
    m_state = LinkState::Connected;
    showConnected(look, firstCableCheckMs);
}

void WiredLink::showUnused()
{
    beginLook();
    m_isWaiting = false;
    m_state = LinkState::Absent;
    emit toolTip(QString());
    emit iconShown(false);
    emit address(QString(), false);
}

void WiredLink::showLink()
{
    m_state = LinkState::Present;
    emit status(LinkWord::link);
    emit address(QString(), false);
}

void WiredLink::showNoCable()
{
    emit indicator(LinkImage::red);
    emit status(LinkWord::noLink);
    emit address(tr("Disconnected"), false);
}

void WiredLink::showConnected(int look, int nextLookMs)
{
    m_network.getNetworkByInterface(eth0, this,
                                    during(look, [this, nextLookMs](bool, const NetworkProperty &property) {
                                        // An address that the interface has got by now is not overlaid with
                                        // the one it had.
                                        if (!property.ip().isEmpty())
                                            forgetAddress();
                                        emit toolTip(property.ip());
                                        emit status(LinkWord::connected);
                                        emit address(property.ip(), true);
                                        if (std::exchange(m_isGroupListDue, false))
                                            emit serverGroupsAffected();
                                        schedule(m_watchTimer, nextLookMs);
                                    }));
}

void WiredLink::waitForCable()
{
    m_isWaiting = true;
    m_isGroupListDue = true;
    m_state = LinkState::Absent;
    emit iconShown(true);
    showNoCable();
    schedule(m_reconnectTimer, reconnectMs);
}

void WiredLink::awaitCable()
{
    const int look = beginLook();
    if (!m_isEnabled())
        return;
    m_network.CheckWiredPlugged(this, during(look, [this, look](NetworkController::Reply plugged) {
                                    if (!plugged.value_or(false) && m_state != LinkState::Absent) {
                                        waitForCable(); // a script has announced one meanwhile
                                        return;
                                    }
                                    if (!plugged.value_or(false) || !m_isEnabled()) {
                                        schedule(m_reconnectTimer, reconnectMs);
                                        return;
                                    }
                                    forgetAddress();
                                    m_network.setNetworkConfig();
                                    m_network.disconnect();
                                    m_network.connectWired();
                                    m_network.afterCommands(this, during(look, [this] { evaluate(); }));
                                }));
}

void WiredLink::watchCable()
{
    if (m_state == LinkState::Absent || m_isWaiting)
        return;
    const int look = beginLook();
    if (!m_isEnabled())
        return;
    m_network.CheckWiredPlugged(this, during(look, [this, look](NetworkController::Reply plugged) {
                                    // A tool that fails once says nothing of the cable: a second look comes
                                    // first.
                                    const bool wasUnsure = std::exchange(m_isUnsure, !plugged);
                                    if (!plugged && !wasUnsure)
                                        schedule(m_watchTimer, cableWatchMs);
                                    else if (plugged.value_or(false))
                                        cablePresent(look);
                                    else
                                        cableAbsent(look);
                                }));
}

void WiredLink::cablePresent(int look)
{
    emit indicator(LinkImage::green);
    if (!m_isAddressOff) {
        followCable(look);
        return;
    }
    putAddressBack();
    m_network.afterCommands(this, during(look, [this, look] { followCable(look); }));
}

/// Shows what a link with a cable has.
void WiredLink::followCable(int look)
{
    if (m_state == LinkState::Connected) {
        showConnected(look, cableWatchMs);
        return;
    }
    m_network.isEthernetConnected(this, during(look, [this, look](NetworkController::Reply connected) {
                                      if (connected.value_or(false)) {
                                          m_state = LinkState::Connected;
                                          showConnected(look, cableWatchMs);
                                      } else {
                                          emit status(LinkWord::link);
                                          schedule(m_watchTimer, cableWatchMs);
                                      }
                                  }));
}

void WiredLink::cableAbsent(int look)
{
    m_isGroupListDue = true;
    showNoCable();
    if (m_isAddressOff)
        schedule(m_watchTimer, cableWatchMs);
    else
        takeAddressOff(look, [this] { schedule(m_watchTimer, cableWatchMs); });
}

void WiredLink::takeAddressOff(int look, const std::function<void()> &next)
{
    const auto takeOff = [this, next](bool, const NetworkProperty &property) {
        takeAddressOff(property);
        next();
    };
    m_network.getNetworkByInterface(eth0, this, during(look, takeOff));
}

void WiredLink::takeAddressOff(const NetworkProperty &property)
{
    m_taken = {property.ip(), QHostAddress(property.broadcast()).toString(), property.prefixLength()};
    m_isAddressOff = true;
    m_network.logBroadcast(
        QStringLiteral("%1:::%2<2>")
            .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")), m_taken.broadcast));
    if (m_taken.address.isEmpty())
        return;
    m_taken.save(); // before it is off
    m_network.setIpConfigure(eth0, m_taken.address, m_taken.prefixLength, false, QString());
    emit serverGroupsAffected();
}

void WiredLink::putAddressBack()
{
    if (!m_taken.address.isEmpty())
        m_network.setIpConfigure(eth0, m_taken.address, m_taken.prefixLength, true, m_taken.broadcast);
    m_network.setRoutingTable();
    m_isAddressOff = false;
    // Not before it is back.
    m_network.afterCommands(this, [this] {
        if (!m_isAddressOff)
            TakenAddress::forget();
    });
}

void WiredLink::forgetAddress()
{
    if (std::exchange(m_isAddressOff, false))
        TakenAddress::forget();
}

void WiredLink::followMessage(const QString &message)
{
    if (message == LinkWord::link) {
        Diagnostics::print(QStringLiteral("LINK_WIRED"));
        showLink();
        emit iconShown(true);
        if (m_isWaiting) // the look that waits for the cable connects it
            return;
        beginLook();
        schedule(m_watchTimer, cableWatchMs);
    } else if (message == LinkWord::connected) {
        Diagnostics::print(QStringLiteral("CONNECTED_WIRED"));
        const int look = beginLook();
        m_isWaiting = false;
        m_state = LinkState::Connected;
        m_isGroupListDue = false;
        emit iconShown(true);
        emit status(LinkWord::connected);
        emit indicator(LinkImage::green);
        emit serverGroupsAffected();
        showConnected(look, firstCableCheckMs);
    } else if (message == LinkWord::noLink) {
        // The state stays: it says what comes back with the cable.
        Diagnostics::print(QStringLiteral("DISCONNECTED_WIRED"));
        showNoCable();
        if (m_isWaiting || m_state == LinkState::Absent)
            return;
        beginLook();
        schedule(m_watchTimer, cableWatchMs);
    }
}
