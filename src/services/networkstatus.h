// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class JsonModule;
class NetworkController;
class NetworkProperty;

/// Watches the wired and the wireless link and says what the screen should show of them.
///
/// Two small state machines, one a link, are driven by three timers, by the outcome of joining a Wi-Fi
/// network and by the messages of the device's scripts. The queries block, as `NetworkController` says.
class NetworkStatus : public QObject
{
    Q_OBJECT

public:
    enum class Link {
        Present = 1,   ///< "link": a cable or an access point, no usable address yet
        Connected = 2, ///< "connected"
        Absent = 3,    ///< "no link"
    };

    static constexpr int pollMs = 5000;
    static constexpr int firstCableCheckMs = 3000;
    static constexpr int cableWatchMs = 5000;
    static constexpr int reconnectMs = 3000;

    NetworkStatus(NetworkController &network, JsonModule &configuration, QObject *parent = nullptr);

    Link wiredState() const;
    Link wirelessState() const;

    /// Reads both links at start.
    void initNetworkStatus();
    /// Once at start, after `initNetworkStatus`: without a cable it begins to wait for one.
    void checkPluggedEthernet();
    /// Once at start: the indicators of the enabled interfaces.
    void initNetworkIcons();
    /// What a device script says of a link: "eth0" or "wlan0", and "link", "connected" or "no link".
    void takeMessage(const QString &interface, const QString &message);

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
    /// The screen does not answer meanwhile.
    void busy(bool busy);

private:
    bool isEnabled(QLatin1String interface) const;
    void applyWired(const QString &word);
    void applyWireless(const QString &word);
    void takeWiredMessage(const QString &message);
    void takeWirelessMessage(const QString &message);
    NetworkProperty readWireless();
    void showWireless(const NetworkProperty &property);
    void showWirelessAbsent();
    /// False when the interface has no address after all.
    bool showWiredConnected();
    void cablePresent();
    void showCable();
    void cableAbsent();
    void takeAddressOff();
    void putAddressBack();
    void remember();

    struct Address
    {
        QString text;
        bool enabled = false;
    };

    NetworkController &m_network;
    JsonModule &m_configuration;
    QTimer m_statusTimer;
    QTimer m_cableWatchTimer;
    QTimer m_reconnectTimer;
    Link m_wiredState = Link::Absent;
    Link m_wirelessState = Link::Absent;

    // What was said last.
    Address m_ethernetAddress;
    Address m_wifiAddress;
    QString m_ethernetIndicator;
    QString m_wifiIndicator;

    // While the cable is out its address is off the interface, so that nothing keeps routing through a dead
    // link.
    QString m_configuredIpAddress;
    QString m_configuredBroadcastAddress;
    int m_configuredPrefix = 0;
    bool m_pluggedCorrect = false; ///< the address has been taken off
    bool m_checkGroupList = false; ///< the launcher's list is due for a refresh when the cable is back
};
