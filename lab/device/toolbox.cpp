// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/toolbox.h"

#include "lab-device/calllog.h"
#include "lab-device/faults.h"
#include "lab-device/output.h"
#include "lab-device/tools.h"

#include <QFile>

namespace {

constexpr int (*recordOnly)(const ToolCall &call) = nullptr;

/// Prints lab/answers/NAME[.ARGUMENT...] unchanged. Returns whether the file exists.
bool printAnswer(const ToolCall &call)
{
    QFile file(call.fileFor(QStringLiteral("answers")));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return false;
    printBytes(file.readAll());
    return true;
}

} // namespace

const std::vector<Tool> &toolTable()
{
    static const std::vector<Tool> tools{
        {"kt-network-config", "usr/bin", runNetworkConfig},
        {"kt-check-gateway", "usr/bin", runCheckGateway},
        {"kt-ip-settings", "usr/bin", runIpSettings},
        {"kt-check-wifi", "usr/bin", runCheckWifi},
        {"kt-enterprise-wifi", "usr/bin", runEnterpriseWifi},
        {"kt-lulling", "usr/bin", runLulling},
        {"kt-set-hostname", "usr/bin", runSetHostname},
        {"kt-set-resolution", "usr/bin", runSetResolution},
        {"kt-set-keyboard", "usr/bin", recordOnly},
        {"kt-set-timezone", "usr/bin", recordOnly},
        {"kt-set-ntp-server", "usr/bin", recordOnly},
        {"kt-switch", "usr/bin", recordOnly},
        {"kt-ftp-proxy-update", "usr/bin", runFtpProxyUpdate},
        {"update-ui", "usr/bin", runUpdateUi},
        {"hostname", "usr/bin", runHostname},
        {"sudo", "usr/bin", runSudo},
        {"pkill", "usr/bin", runPkill},
        {"numlockx", "usr/bin", recordOnly},
        {"systemctl", "usr/bin", recordOnly},
        {"date", "usr/bin", recordOnly},
        {"lsusb", "usr/bin", recordOnly},
        {"route", "usr/bin", runRoute},
        {"route", "usr/sbin", runRoute},
        {"tvservice", "usr/bin", recordOnly},
        {"tvservice", "opt/vc/bin", recordOnly},
        {"ntp", "etc/init.d", recordOnly},
        {"kt964-sleep", "etc/init.d", recordOnly},
    };
    return tools;
}

QStringList toolFolders()
{
    QStringList folders;
    for (const Tool &tool : toolTable())
        folders << QLatin1String(tool.folder);
    folders.removeDuplicates();
    return folders;
}

int runTool(const ToolCall &call)
{
    logCall(call);
    if (const std::optional<int> status = applyFault(call))
        return *status;
    if (printAnswer(call))
        return 0;
    for (const Tool &tool : toolTable())
        if (call.name == QLatin1String(tool.name))
            return tool.run == recordOnly ? 0 : tool.run(call);
    printError(QStringLiteral("%1: no such tool in this device").arg(call.name));
    return 127;
}
