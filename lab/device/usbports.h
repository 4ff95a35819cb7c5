// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QStringList>

/// The device's USB bus: a folder with a descriptor file for each device (dev/bus/usb/001). libusb reads it
/// like the kernel's folder of a bus.
class UsbPorts
{
public:
    explicit UsbPorts(const DeviceRoot &root);

    /// Creates the bus of a new device, with its internal and external devices. Keeps an existing bus.
    bool create() const;

    /// Returns number and identifier of each device, as in "002 03ba:04ce".
    QStringList devices() const;

    /// Plugs in a device of an interface class. Like the kernel, gives it a new number. Returns false for an
    /// invalid identifier, and when the file cannot be written.
    bool plug(const QString &identifier, int interfaceClass = 0xff) const;
    /// Unplugs one device with that identifier; returns false when there is none.
    bool unplug(const QString &identifier) const;

private:
    QString m_bus;
    DeviceRoot m_root;
};
