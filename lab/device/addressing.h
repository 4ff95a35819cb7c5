// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QJsonObject>

// How an interface is addressed.
struct Addressing
{
    QString type;
    QString address;
    QString netmask;
    QString gateway;
};

// One of the device's two interfaces, as the files lab/state/wired-* or lab/state/wireless-* describe it.
class DeviceInterface
{
public:
    static DeviceInterface wired(const DeviceRoot &root);
    static DeviceInterface wireless(const DeviceRoot &root);

    Addressing addressing() const;

    // Gives the interface its address, or takes it away, and chooses the default route anew. The kind of
    // addressing stays known after a disconnect.
    void connect(const Addressing &addressing) const;
    void disconnect() const;

    // Only the address itself, as the device's address tool changes it.
    void setAddress(const QString &address, const QString &netmask) const;

    // This interface's object in the configuration that was stored last; empty on a device never configured.
    QJsonObject configuration() const;

    // What the last stored configuration asks for this interface; a device that was never configured asks
    // DHCP.
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

// Lets lab/state/default-route hold the gateway of the wired interface when that has an address, else the
// wireless one's, else nothing.
void chooseDefaultRoute(const DeviceRoot &root);

// "255.255.255.0" for 24, and back; empty and -1 for what is no netmask.
QString netmaskOf(int prefixLength);
int prefixLengthOf(const QString &netmask);
