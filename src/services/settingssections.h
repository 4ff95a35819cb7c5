// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QFlags>
#include <QJsonObject>
#include <QLatin1String>
#include <QVector>

/// The parts of the document that the device's tools are told about, each by itself.
namespace SettingsSections {

enum Section {
    HostName = 1 << 0,
    Network = 1 << 1, ///< the network tool's copy of all network settings
    Wired = 1 << 2,
    Wireless = 1 << 3,
    Dns = 1 << 4,
    DisplayMode = 1 << 5,
    ScreenSaver = 1 << 6,
    KeyboardLayout = 1 << 7,
    NumLock = 1 << 8,
    TimeZone = 1 << 9,
    TimeServer = 1 << 10,
    ClientMode = 1 << 11,
};
Q_DECLARE_FLAGS(Sections, Section)
Q_DECLARE_OPERATORS_FOR_FLAGS(Sections)

/// In the order in which they are carried out.
const QVector<Section> &all();
/// All that are carried out before this one.
Sections before(Section section);
/// What would disturb a session.
constexpr Sections disturbing{Network | Wired | Wireless | Dns | DisplayMode | ClientMode};

/// The section's key in the record of what was carried out.
QLatin1String name(Section section);
/// A digest of all that the section's tools are told: two documents with the same one ask the same of the
/// device. Secrets cannot be read from it.
QByteArray fingerprint(const QJsonObject &root, Section section);
} // namespace SettingsSections
