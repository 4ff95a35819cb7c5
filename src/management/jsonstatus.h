// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/networkproperty.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>
#include <QStringList>

/// What the network tools say of the two interfaces.
struct InterfaceFacts
{
    NetworkProperty wired;
    NetworkProperty wireless;
};

/// What the device tells of itself when the object is made: firmware, identity, the interface in use, whether
/// a session runs. What cannot be read keeps its starting value.
///
/// Of two interfaces with an address the report shows the wired one, of none too; mask and gateway are those
/// of the interface that is shown.
class JSONStatus
{
public:
    explicit JSONStatus(const InterfaceFacts &interfaces);

    /// The report as compact JSON text.
    QByteArray get() const;

    QString getFWVersion() const;
    QString getFWName() const;
    QString getSerialNumber() const;
    int getConfigVersion() const;
    QString getDeviceName() const;
    QString getIpAddress() const; ///< of the wired interface
    QString getIpNetmask() const; ///< of the wired interface
    QString getGateway() const;
    QString getMacAddress() const; ///< of the wired interface
    QString getWifiIpAddress() const;
    QString getWmacAddress() const;
    QString getIPType() const; ///< of the wireless interface
    QString getWiredIPType() const;
    QString getIFaceName() const;

private:
    void ReadFWVersion();
    void GetDeviceSN();
    void GetDataFromConfig();
    void GetNetworkStatus(const InterfaceFacts &interfaces);
    void GetConnectionStatus();
    void CreateBaseJSON();
    bool isWired() const;

    QString m_firmwareVersion = QStringLiteral("?.?.?");
    QString m_firmwareName;
    QString m_serialNumber;
    QString m_deviceName = QStringLiteral("<unknown>");
    bool m_passwordEnabled = false;
    QString m_passwordHash;
    int m_configVersion = 0;
    QString m_interface;
    QString m_wiredIp = QStringLiteral("0.0.0.0");
    QString m_wiredMac;
    QString m_wirelessIp = QStringLiteral("0.0.0.0");
    QString m_wirelessMac;
    QString m_netmask = QStringLiteral("0.0.0.0");
    QString m_gateway = QStringLiteral("0.0.0.0");
    QString m_ipType;
    QString m_wiredNetmask = QStringLiteral("0.0.0.0");
    QString m_wiredIpType;
    QString m_wirelessIpType;
    QString m_connectionStatus = QStringLiteral("disconnected");
    QStringList m_servers;
    QJsonDocument m_report;
};
