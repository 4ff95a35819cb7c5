// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

class QJsonObject;
class QWidget;

/// Switches the device from the launcher to its own desktop.
namespace DesktopModeDialog {

/// Asks for the administrator password, if one is set, and for confirmation, then switches the device.
/// Returns true if the user confirmed.
bool ask(QWidget *parent, const QJsonObject &root);

} // namespace DesktopModeDialog
