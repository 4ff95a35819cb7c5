// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The vendor and the product of a USB device, as in "03ba:04ce".
namespace UsbIdentifier {

/// Whether a text is an identifier, in lower or upper case.
bool isValid(const QString &text);

/// Whether the terminal itself needs the device, so that no session gets it.
bool isOfTerminal(const QString &identifier);

} // namespace UsbIdentifier
