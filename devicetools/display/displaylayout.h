// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "devicetools-display/displaymode.h"

#include <QByteArray>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QVector>

#include <optional>

class QJsonObject;

/// A connector of the graphics card, and the monitor on it.
struct Output
{
    quint32 id = 0; ///< the X server's
    QString name;
    bool isConnected = false;
    bool isPrimary = false;
    quint32 currentMode = 0; ///< the X server's number of the mode; 0: switched off
    QPoint position;
    QVector<MonitorMode> modes;
    QByteArray edid;
};

/// "display settings" of the configuration document.
struct DisplaySettings
{
    QString primaryResolution;
    QString secondaryResolution;
    QString position; ///< of the second display: "right", "left", "top" or "bottom"
    bool isMirrored = false;
    int screenSaverMinutes = 0; ///< 0: never

    /// From the document's root; keys that are missing or of a wrong type get the defaults.
    static DisplaySettings from(const QJsonObject &root);
};

/// Where one output is to show what.
struct Placement
{
    quint32 output = 0;
    quint32 mode = 0;
    QPoint position;
    QSize picture; ///< the size of its mode
    QSize shown;   ///< the part of the screen that it shows; scaled if this is another size
};

/// Which outputs are on, and where. All others are switched off.
struct DisplayLayout
{
    QVector<Placement> placements; ///< the primary first

    QSize screen() const;
    bool isScaled() const;
    /// The same for a graphics card that cannot scale: a mirror of another size shows a part of the screen,
    /// or more.
    DisplayLayout unscaled() const;
};

namespace Layout {

/// The output that the launcher's page is about: the X server's primary one while a monitor is connected to
/// it, else the first with a monitor. Null when there is no monitor.
const Output *primary(const QVector<Output> &outputs);
/// The first other output with a monitor. A third one stays dark.
const Output *secondary(const QVector<Output> &outputs);

/// `mode` is the primary's. A second display follows the settings; one that mirrors takes the primary's size
/// if it has a mode of that size, and scales the picture otherwise. Empty without a monitor.
DisplayLayout plan(const QVector<Output> &outputs, const MonitorMode &mode, const DisplaySettings &settings);

} // namespace Layout
