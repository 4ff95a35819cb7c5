// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

#include <vector>

// A stand-in: the name it is called by, the folder of the device where it stands, and what it does. Without a
// function it does only what every stand-in does: its call is recorded, and it misbehaves or answers as files
// of the lab say.
struct Tool
{
    const char *name;
    const char *folder;
    int (*run)(const ToolCall &call);
};

// Every place where a stand-in stands. A tool is added by adding its line here.
const std::vector<Tool> &toolTable();

// The folders of the table, each once: where the device looks for a tool that is called without a path.
QStringList toolFolders();

// Carries out one call: records it, misbehaves if a fault is set, prints the answer that lab/answers holds
// for it, else does what the tool does. Returns the exit status.
int runTool(const ToolCall &call);
