// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QStringList>

/// Returns the options of xfreerdp that hand devices to the session, as a configuration document requests
/// them. `serialPorts` are the device files of the ports that are plugged in.
QStringList redirectionOptions(const QJsonObject &configuration, const QStringList &serialPorts);

/// The device files of the USB serial ports, in the order of their numbers.
QStringList usbSerialPorts();
