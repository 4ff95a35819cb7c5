// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

#include <optional>

// The words that a fault file may begin with, for help texts and checks.
QStringList faultKinds();

// Misbehaves as lab/faults/NAME[.ARGUMENT...] asks. Returns the exit status with which the tool ends now, or
// nothing when it is to go on (no fault, or only a slow one).
std::optional<int> misbehave(const ToolCall &call);
