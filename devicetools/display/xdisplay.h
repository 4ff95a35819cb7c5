// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "devicetools-display/displaylayout.h"

#include <memory>

struct _XDisplay;

/// The X server: its monitors, and its screen saver.
///
/// A tool that neither inherits DISPLAY nor XAUTHORITY (a script run by root or by udev) talks to the
/// launcher's server.
class XDisplay
{
public:
    /// Null, after a line on standard error, when there is no server or it lacks what the tools need.
    static std::unique_ptr<XDisplay> open();
    ~XDisplay();

    /// All outputs, with the modes of the monitors that are connected now.
    QVector<Output> outputs();
    /// Makes the screen as laid out; of the first placement's output, the primary one. Returns an empty text,
    /// or what went wrong; the screen is then as it was.
    QString apply(const DisplayLayout &layout);
    /// The layout in use.
    DisplayLayout current();

    /// Blanks the screen and switches the monitor off after so many minutes without input; 0: never. The
    /// server counts up to 32767 seconds, so a longer time counts as nine hours.
    void setBlanking(int minutes);

private:
    explicit XDisplay(_XDisplay *display);

    QByteArray edid(quint32 output);
    QString configure(const DisplayLayout &layout);

    _XDisplay *m_display;
};
