// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QStringList>

// The device's USB bus: a folder with a descriptor file for each device (dev/bus/usb/001), which libusb reads
// like a bus of the kernel's.
class UsbPorts
{
public:
    explicit UsbPorts(const DeviceRoot &root);

    // Makes the bus of a fresh device: what the board itself carries, and what stands on a desk. A bus that
    // exists stays.
    bool furnish() const;

    // The number and the identifier ("03ba:04ce") of each device: "002 03ba:04ce".
    QStringList devices() const;

    // Plugs in a device of an interface class; false when the identifier is none, or nothing can be written.
    // Like a kernel, the bus gives every device a new number.
    bool plug(const QString &identifier, int interfaceClass = 0xff) const;
    // Pulls out one device of that identifier; false when there is none.
    bool unplug(const QString &identifier) const;

private:
    QString m_bus;
    DeviceRoot m_root;
};
