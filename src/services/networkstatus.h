// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/wiredlink.h"
#include "services/wirelesslink.h"

#include <optional>

class JsonModule;

/// The wired and the wireless link, and what the screen should show of them.
///
/// Two small state machines, one a link, are driven by timers, by the outcome of joining a Wi-Fi network, by
/// the messages of the device's scripts and by what the settings put in force. Nothing here waits for a tool.
class NetworkStatus : public QObject
{
    Q_OBJECT

public:
    using Link = LinkState;

    NetworkStatus(NetworkController &network, JsonModule &configuration, QObject *parent = nullptr);

    Link wiredState() const;
    Link wirelessState() const;
    /// Whether "eth0" or "wlan0" is connected, by what is known of it now.
    bool isConnected(const QString &interface) const;

    /// Reads both links at start, when the document is there.
    void initNetworkStatus();
    /// What a device script says of a link: "eth0" or "wlan0", and "link", "connected" or "no link".
    void takeMessage(const QString &interface, const QString &message);
    /// For tests that have no seconds to spare: all timers.
    void setInterval(int milliseconds);

    /// Says again what was said last of the addresses and the indicators: for a screen that was not there.
    void sayAgain();

public slots:
    /// The stored network settings have been put in force as a whole.
    void takeApplied();
    /// The wired interface has been connected as it is configured now, or disconnected.
    void takeWiredApplied(bool enabled);
    /// The wireless network has been left, to join one anew or for good.
    void takeWirelessLeft(bool turnedOff);
    /// Joining a Wi-Fi network has ended.
    void setWifiStatus(bool connected);
    void turnOffWifi();
    void updateNetworkStatus();
    void checkEthernetPlugged();
    void reconnectEthernet();

signals:
    void wiredStatus(const QString &state);
    void wirelessStatus(const QString &state, int signal);
    void wiredIconShown(bool shown);
    void wirelessIconShown(bool shown);
    void wiredToolTip(const QString &text);
    void wirelessToolTip(const QString &text);
    /// The text of an address label, and whether the widgets around it are enabled.
    void ethernetAddress(const QString &text, bool enabled);
    void wifiAddress(const QString &text, bool enabled);
    /// The image that marks an interface in the list of pages.
    void ethernetIndicator(const QString &image);
    void wifiIndicator(const QString &image);
    void wifiTurnedOff();
    /// Servers may be reachable again, or no longer.
    void serverGroupsAffected();
    /// An interface has another address than it had, perhaps in another subnet.
    void addressChanged();

private:
    bool isEnabled(QLatin1String interface) const;
    void passOn();
    void remember();

    struct Address
    {
        QString text;
        bool enabled = false;
    };
    void compare(std::optional<QString> &last, const Address &present);

    JsonModule &m_configuration;
    WiredLink m_wired;
    WirelessLink m_wireless;

    // What was said last.
    Address m_ethernetAddress;
    Address m_wifiAddress;
    std::optional<QString> m_lastEthernet; ///< the addresses last in use; nothing before the first report
    std::optional<QString> m_lastWifi;
    QString m_ethernetIndicator = LinkImage::red;
    QString m_wifiIndicator = LinkImage::red;
};
