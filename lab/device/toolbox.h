// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

#include <vector>

/// A stand-in: its name, its folder on the device, and its function. Without a function a stand-in does only
/// what all do: it records its call and applies the lab's faults and answers.
struct Tool
{
    const char *name;
    const char *folder;
    int (*run)(const ToolCall &call);
};

/// Lists all stand-ins. To add a tool, add its line here.
const std::vector<Tool> &toolTable();

/// Returns the folders of the table, each once. The device looks in them for a tool called without a path.
QStringList toolFolders();

/// Runs one call: records it, applies a fault, then prints the answer from lab/answers or else runs the
/// tool's function. Returns the exit status.
int runTool(const ToolCall &call);
