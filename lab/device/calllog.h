// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

/// Quotes a word for a shell if necessary. Writes a line end as \n inside $'...', so that each call is one
/// line.
QString shellWord(const QString &word);

/// Appends "name argument argument" to lab/calls.log in a single write, so that simultaneous calls do not
/// mix.
void logCall(const ToolCall &call);
