// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

struct UsbStick
{
    QString name; ///< of its folder
    QString path;
    bool writable = false;
};

namespace UsbSticks {

/// The sticks mounted below /media, directly or in a user's folder there; writable ones come first. A folder
/// without a mounted file system is not a stick, because files in it stay on the device. In the lab nothing
/// can be mounted, so a folder without subfolders acts as a stick.
QVector<UsbStick> mounted();

} // namespace UsbSticks
