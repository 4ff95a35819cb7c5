// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// The lists that the launcher offers, from the machine's data: a comment, then one entry a line with fields
/// that ": " separates.
namespace LayoutList {

/// "DE-nodeadkeys: de(nodeadkeys): German (no dead keys)" for each layout and variant of the XKB database,
/// ordered by name. `rules` is the text of its evdev.lst. The code of "gb" is UK, as devices have always
/// called it.
QByteArray make(const QByteArray &rules);

} // namespace LayoutList

namespace ZoneList {

/// "Europe/Berlin: UTC+01:00: Germany, most of Germany" for each zone of `folder`/zone.tab, and for UTC and
/// the zones below US/ where the machine has them; ordered by standard offset, then by name.
QByteArray make(const QString &folder);

} // namespace ZoneList
