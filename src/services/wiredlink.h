// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/linkstate.h"
#include "services/takenaddress.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class NetworkController;
class NetworkProperty;

/// The wired link: whether there is a cable and an address.
///
/// It looks by asking the network tool, and nobody waits for the replies. One look is under way at a time: a
/// new one supersedes the one before it, whose replies then change nothing. The timer that starts the next
/// look runs from the end of this one.
///
/// While the cable is out its address is off the interface, so that nothing keeps routing through a dead
/// link. It is put back when the cable returns, even if the program has ended meanwhile. An interface that
/// has no cable when it is to be connected is connected as soon as there is one.
class WiredLink : public QObject
{
    Q_OBJECT

public:
    static constexpr int firstCableCheckMs = 3000;
    static constexpr int cableWatchMs = 5000;
    static constexpr int reconnectMs = 3000;

    /// `isEnabled` tells what the configuration says of the interface. A disabled one is not looked at.
    WiredLink(NetworkController &network, const std::function<bool()> &isEnabled, QObject *parent = nullptr);

    LinkState state() const;
    /// Connected, with its address on the interface.
    bool isConnected() const;

    /// Reads the link at start.
    void start();
    /// The interface has been connected as it is configured now, or disconnected.
    void followApplied(bool enabled);
    /// What a device script says: "link", "connected" or "no link".
    void followMessage(const QString &message);
    /// One look at the cable of a link that is present or connected.
    void watchCable();
    /// One look for the cable that has been missing, and the connection when it is there.
    void awaitCable();
    /// For tests that have no seconds to spare: all timers.
    void setInterval(int milliseconds);

signals:
    void status(const QString &word);
    void iconShown(bool shown);
    void toolTip(const QString &text);
    void address(const QString &text, bool enabled);
    void indicator(const QString &image);
    /// Servers may be reachable again, or no longer.
    void serverGroupsAffected();

private:
    int beginLook();
    /// `step` as long as the look `look` has not been superseded.
    template <typename Step>
    auto during(int look, const Step &step);
    void schedule(QTimer &timer, int milliseconds);

    void evaluate();
    void settle(int look, bool connected, std::optional<bool> plugged);
    void showUnused();
    void showLink();
    void showNoCable();
    void showConnected(int look, int nextLookMs);
    void waitForCable();
    void cablePresent(int look);
    void cableAbsent(int look);
    void followCable(int look);
    void takeAddressOff(int look, const std::function<void()> &next);
    void takeAddressOff(const NetworkProperty &property);
    void putAddressBack();
    void forgetAddress();

    NetworkController &m_network;
    std::function<bool()> m_isEnabled;
    QTimer m_watchTimer;     ///< of a link that is present or connected
    QTimer m_reconnectTimer; ///< while the interface waits for a cable to be connected
    int m_intervalMs = 0;    ///< in place of all intervals; 0: each as named above
    int m_look = 0;
    LinkState m_state = LinkState::Absent;
    bool m_isWaiting = false; ///< for a cable, to be connected when there is one
    bool m_isUnsure = false;  ///< the last question for the cable had no reply
    bool m_isGroupListDue = false;

    bool m_isAddressOff = false; ///< the address below has been taken off
    TakenAddress m_taken;
};
