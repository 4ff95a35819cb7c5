// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVector>

struct UsbStick
{
    QString name; ///< as its folder is called
    QString path;
    bool writable = false;
};

namespace UsbSticks {

/// The sticks that are mounted below /media, directly or in a user's folder there; those that can be written
/// to come first. A folder that nothing is mounted on is no stick: what is written there stays on the device.
/// Below a device root of the lab, where nothing can be mounted, a folder without folders stands for a stick.
QVector<UsbStick> mounted();

} // namespace UsbSticks
