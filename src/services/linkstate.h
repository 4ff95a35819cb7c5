// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// What a network link is known to be.
enum class LinkState {
    Present = 1,   ///< "link": a cable or an access point, no usable address yet
    Connected = 2, ///< "connected"
    Absent = 3,    ///< "no link"
};

/// The words of device scripts and status icons, and the images that mark an interface in the list of pages.
namespace LinkWord {
inline const QString link = QStringLiteral("link");
inline const QString connected = QStringLiteral("connected");
inline const QString noLink = QStringLiteral("no link");
} // namespace LinkWord

namespace LinkImage {
inline const QString green = QStringLiteral(":/images/network_indicator_green.png");
inline const QString red = QStringLiteral(":/images/network_indicator_red.png");
} // namespace LinkImage
