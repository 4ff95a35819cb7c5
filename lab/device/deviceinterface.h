// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QJsonObject>

/// The addressing of an interface.
struct Addressing
{
    QString type;
    QString address;
    QString netmask;
    QString gateway;
};

/// One of the device's two interfaces. The files lab/state/wired-* and lab/state/wireless-* hold its state.
class DeviceInterface
{
public:
    static DeviceInterface wired(const DeviceRoot &root);
    static DeviceInterface wireless(const DeviceRoot &root);

    Addressing addressing() const;

    /// Sets or removes the address, and chooses the default route again. disconnect() keeps the type of
    /// addressing.
    void connect(const Addressing &addressing) const;
    void disconnect() const;

    /// Changes the address alone, as the device's address tool does.
    void setAddress(const QString &address, const QString &netmask) const;

    /// Returns this interface's object in the stored configuration; empty when none is stored.
    QJsonObject configuration() const;

    /// Returns the addressing in the stored configuration; DHCP when none is stored.
    Addressing wanted() const;
    bool isEnabled() const;

private:
    DeviceInterface(const DeviceRoot &root, const QString &prefix, const QString &section,
                    const Addressing &lease);
    QString get(const char *fact) const;
    void set(const char *fact, const QString &value) const;

    DeviceRoot m_root;
    QString m_prefix;
    QString m_section;
    Addressing m_lease;
};

/// Writes lab/state/default-route: the gateway of the wired interface when it has an address, or else that of
/// the wireless interface.
void chooseDefaultRoute(const DeviceRoot &root);

/// Converts between prefix length and netmask: 24 and "255.255.255.0". Returns an empty text, or -1, for an
/// invalid value.
QString netmaskOf(int prefixLength);
int prefixLengthOf(const QString &netmask);
