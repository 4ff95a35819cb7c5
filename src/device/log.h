// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/logring.h"

/// The log of this program: the framework's messages and the diagnostics, the last of which are kept.
namespace Log {

/// What the process has kept so far.
LogRing &ring();

/// Keeps the framework's messages from now on; they are written as before, to standard error as a rule.
///
/// What holds credentials is logged under a category whose name ends in ".credentials": such messages are
/// written, and never kept.
void install();

} // namespace Log
