// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/liveinterface.h"

#include "lab-device/output.h"

#include <QFileInfo>
#include <QProcess>

#include <net/if.h>

namespace {

constexpr int ipTimeout = 5000;

bool isLive(const DeviceRoot &root)
{
    return QFileInfo::exists(root.labFile(QStringLiteral("live-network"))) && ::if_nametoindex("lab0") != 0;
}

bool runIp(const QStringList &arguments)
{
    QProcess ip;
    ip.setProcessChannelMode(QProcess::MergedChannels);
    ip.start(QStringLiteral("ip"), arguments);
    if (ip.waitForFinished(ipTimeout) && ip.exitStatus() == QProcess::NormalExit && ip.exitCode() == 0)
        return true;
    printError(QStringLiteral("ip %1: %2")
                   .arg(arguments.join(QLatin1Char(' ')), QString::fromUtf8(ip.readAll()).trimmed()));
    return false;
}

QString withPrefix(const QString &address, int prefixLength)
{
    return QStringLiteral("%1/%2").arg(address).arg(prefixLength);
}

} // namespace

void addLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength,
                    const QString &broadcast)
{
    if (isLive(root))
        runIp({QStringLiteral("addr"), QStringLiteral("replace"), withPrefix(address, prefixLength),
               QStringLiteral("broadcast"), broadcast.isEmpty() ? QStringLiteral("+") : broadcast,
               QStringLiteral("dev"), QStringLiteral("eth0")});
}

void removeLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength)
{
    if (isLive(root))
        runIp({QStringLiteral("addr"), QStringLiteral("del"), withPrefix(address, prefixLength),
               QStringLiteral("dev"), QStringLiteral("eth0")});
}
