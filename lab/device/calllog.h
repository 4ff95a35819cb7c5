// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

// A word as one would type it into a shell: unchanged when it is plain, else in single quotes. Line ends are
// written as \n inside $'...', so that a call always is one line.
QString shellWord(const QString &word);

// Appends "name argument argument" to lab/calls.log in a single write, so that calls made at once do not mix.
void logCall(const ToolCall &call);
