// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

namespace UsbBus {

/// The sorted identifiers ("03ba:04ce") of the plugged-in devices, without duplicates. A device without a
/// complete descriptor is skipped; it may have just been unplugged.
QStringList identifiers();

} // namespace UsbBus
