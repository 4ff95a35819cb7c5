// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QStringList>

/// What a monitor's description (EDID) says about its sound.
namespace EdidSound {

/// One line for each sound format that the monitor plays, as the board's firmware tool prints them. Empty for
/// a monitor without sound, and for a description that is damaged.
QStringList formats(const QByteArray &edid);

} // namespace EdidSound
