// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// What this device is: its board and the firmware on it.
namespace Identity {

struct Firmware
{
    QString version; ///< "?.?.?" when the release file does not say
    QString name;
};

/// From the INI file /etc/kt-release.
Firmware firmware();
/// The board's serial number in lower-case hexadecimal without leading zeros, from the firmware's property
/// mailbox
/// (/dev/vcio). Empty when there is none to ask.
QString serialNumber();
/// Since the start of the system, in whole seconds; -1 when unknown.
qint64 uptimeSeconds();

} // namespace Identity
