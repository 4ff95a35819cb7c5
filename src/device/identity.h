// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

/// What this device is: its board and the firmware on it.
namespace Identity {

struct Firmware
{
    QString version; ///< "?.?.?" when the release file does not say
    QString name;
};

/// From the INI file /etc/kt-release.
Firmware firmware();
/// A number that stays the same and differs from every other machine's, in lower-case hexadecimal without
/// leading zeros. It is the board's serial number, from the firmware's property mailbox (/dev/vcio) or from
/// the device tree; else it is derived from what the machine's firmware says of the machine, or at last from
/// the identifier of the installed system. With a device root only the mailbox is asked; empty when there is
/// none.
QString serialNumber();
/// A serial number derived from what a machine's firmware says of it: numbers, identifiers, and texts that
/// its maker never filled in. Empty when none of them tells this machine from another one.
QString derivedSerialNumber(const QStringList &firmwareTexts);
/// Since the start of the system, in whole seconds; -1 when unknown.
qint64 uptimeSeconds();

} // namespace Identity
