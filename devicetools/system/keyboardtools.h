// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "devicetools-system/xkblayout.h"

#include <QStringList>

/// The keyboard's layout.
namespace KeyboardTools {

/// kt-set-keyboard CODE LAYOUT | --stored. Returns a Tool::Status.
int setKeyboard(const QStringList &arguments);

/// The layout for the two fields of the device's list. A code that the list does not have comes without the
/// second one; the code itself is taken then.
std::optional<XkbLayout> layoutFor(const QString &code, const QString &layout);
/// The second field of the list's line for `code`; empty without such a line.
QString listed(const QString &code, const QString &fileName);

} // namespace KeyboardTools
