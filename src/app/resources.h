// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

class QApplication;

/// The compiled-in images and the look of the whole program.
namespace Resources {

/// Registers the bundle and gives the application its style sheet, font and icon.
void apply(QApplication &application);

} // namespace Resources
