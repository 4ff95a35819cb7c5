// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

namespace UsbBus {

/// The identifiers ("03ba:04ce") of the devices plugged in, each once and in order. A device of which no
/// whole descriptor can be read, because it has just been pulled out for one, is left out.
QStringList identifiers();

} // namespace UsbBus
