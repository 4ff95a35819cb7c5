// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

class QJsonObject;
class QWidget;

/// Leaves the launcher for the device's own desktop.
namespace DesktopModeDialog {

/// Asks for the administrator password when one is set, then whether to go, and switches the device over.
/// True when it was told to.
bool ask(QWidget *parent, const QJsonObject &root);

} // namespace DesktopModeDialog
