// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"
#include "lab-device/tools.h"
#include "lab-device/wifinetworks.h"

namespace {

QString verdictLine(WifiVerdict verdict)
{
    switch (verdict) {
    case WifiVerdict::Connected:
        return QStringLiteral("connected");
    case WifiVerdict::IncorrectKey:
        return QStringLiteral("incorrect key");
    case WifiVerdict::CertificateRefused:
        return QStringLiteral("certificate verification failed");
    case WifiVerdict::NotFound:
        break;
    }
    return QStringLiteral("network not found");
}

int joinAndReport(const ToolCall &call, const WifiCredentials &credentials)
{
    printLine(QStringLiteral("associating with %1").arg(credentials.ssid));
    const WifiVerdict verdict = WifiNetworks(call.root).join(credentials);
    printLine(verdictLine(verdict));
    return verdict == WifiVerdict::Connected ? 0 : 1;
}

int usage(const ToolCall &call, const char *arguments)
{
    printError(QStringLiteral("usage: %1 %2").arg(call.name, QLatin1String(arguments)));
    return 2;
}

} // namespace

int runCheckWifi(const ToolCall &call)
{
    if (call.arguments.size() != 3)
        return usage(call, "SSID KEY 0|1");
    WifiCredentials credentials;
    credentials.ssid = call.argument(0);
    credentials.key = call.argument(1);
    credentials.hidden = call.argument(2) == QLatin1String("1");
    return joinAndReport(call, credentials);
}

int runEnterpriseWifi(const ToolCall &call)
{
    if (call.arguments.size() != 10)
        return usage(call, "SSID USER METHOD ENCRYPTION SECURITY 0|1 CA CLIENT PASSWORD CLIENT-PASSWORD");
    WifiCredentials credentials;
    credentials.ssid = call.argument(0);
    credentials.user = call.argument(1);
    credentials.authenticationMethod = call.argument(2);
    credentials.hidden = call.argument(5) == QLatin1String("1");
    credentials.caCertificate = call.argument(6);
    credentials.clientCertificate = call.argument(7);
    credentials.password = call.argument(8);
    return joinAndReport(call, credentials);
}
