// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

#include <optional>

/// Returns the words with which a fault file may begin.
QStringList faultKinds();

/// Applies the fault of lab/faults/NAME[.ARGUMENT...]. Returns an exit status when the tool must end now;
/// nothing when it goes on (without a fault, or slowly).
std::optional<int> applyFault(const ToolCall &call);
