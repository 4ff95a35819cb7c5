// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

/// The tools of the display. Each returns a Tool::Status.
namespace DisplayTools {

/// kt-set-resolution [GROUP CODE | -m]
int setResolution(const QStringList &arguments);
/// tvservice -j -m GROUP | -a
int tvService(const QStringList &arguments);
/// report-display: lays out the screen after a monitor came or went, and tells the launcher.
int reportDisplay(const QStringList &arguments);
/// set-blanking [never]
int setBlanking(const QStringList &arguments);
/// restore-display: before a session, modes, layout, blanking and keyboard from the document. A launcher with
/// a wrong screen is better than none, so a failure is only reported.
int restoreDisplay(const QStringList &arguments);

} // namespace DisplayTools
