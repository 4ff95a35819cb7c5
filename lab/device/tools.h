// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/toolcall.h"

/// The functions of the stand-ins. Each returns the exit status.
int runNetworkConfig(const ToolCall &call);
int runCheckGateway(const ToolCall &call);
int runIpSettings(const ToolCall &call);
int runRoute(const ToolCall &call);
int runCheckWifi(const ToolCall &call);
int runEnterpriseWifi(const ToolCall &call);
int runSetHostname(const ToolCall &call);
int runHostname(const ToolCall &call);
int runFtpProxyUpdate(const ToolCall &call);
int runUpdateUi(const ToolCall &call);
int runLulling(const ToolCall &call);
int runSetResolution(const ToolCall &call);
int runSudo(const ToolCall &call);
int runPkill(const ToolCall &call);
