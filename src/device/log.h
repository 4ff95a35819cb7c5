// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

/// The log of this program: the last messages of the framework and of `Diagnostics`.
namespace Log {

/// The lines kept so far.
LogRing &ring();

/// Starts to keep the framework's messages. They are still written as before, usually to standard error.
///
/// Messages with credentials use a category whose name ends in ".credentials": they are written but never
/// kept.
void install();

} // namespace Log
