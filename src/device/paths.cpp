// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/paths.h"

#include <QFileInfo>

namespace Paths {

QString root()
{
    return qEnvironmentVariable("KT_DEVICE_ROOT");
}

QString onDevice(const QString &path)
{
    return root() + path;
}

QString program(const QString &name)
{
    if (name.startsWith(QLatin1Char('/')))
        return onDevice(name);
    if (root().isEmpty())
        return name;
    for (const char *folder : {"/usr/bin/", "/usr/sbin/"}) {
        QString candidate = onDevice(QLatin1String(folder) + name);
        if (QFileInfo(candidate).isExecutable())
            return candidate;
    }
    return name;
}

QString stateDirectory()
{
    return onDevice(QStringLiteral("/var/lib/kt964/"));
}

QString configuration()
{
    return stateDirectory() + QLatin1String("config.json");
}

QString recoveryMarker()
{
    return stateDirectory() + QLatin1String("RECOVERY");
}

QString appliedRecord()
{
    return stateDirectory() + QLatin1String("applied.json");
}

QString takenAddress()
{
    return stateDirectory() + QStringLiteral("taken-address.json");
}

QString message()
{
    return onDevice(QStringLiteral("/tmp/msg.json"));
}

QString connection()
{
    return onDevice(QStringLiteral("/tmp/connect.json"));
}

QString connectionStatus()
{
    return connection() + QLatin1String(".status");
}

QString updates()
{
    return onDevice(QStringLiteral("/var/lib/updates/"));
}

QString firmwareImage()
{
    return updates() + QLatin1String("new-firmware.img");
}

QString broadcastLog()
{
    return onDevice(QStringLiteral("/tmp/broadcastlog"));
}

QString nameServers()
{
    return onDevice(QStringLiteral("/etc/resolv.conf"));
}

QString release()
{
    return onDevice(QStringLiteral("/etc/kt-release"));
}

QString propertyMailbox()
{
    return onDevice(QStringLiteral("/dev/vcio"));
}

QString usbBus()
{
    return onDevice(QStringLiteral("/dev/bus/usb"));
}

QString usbIdentifiers()
{
    return onDevice(QStringLiteral("/var/lib/usbutils/usb.ids"));
}

QString dhcpOptions()
{
    return onDevice(QStringLiteral("/tmp/dhcp-options.conf"));
}

QString keyboardLayouts()
{
    return onDevice(QStringLiteral("/etc/keyboard_layouts"));
}

QString timezones()
{
    return onDevice(QStringLiteral("/etc/timezones"));
}

QString media()
{
    return onDevice(QStringLiteral("/media"));
}

QString caCertificates()
{
    return clientCertificates() + QLatin1String("cacerts");
}

QString clientCertificates()
{
    return stateDirectory() + QLatin1String("certificates/");
}

QString clientDirectory()
{
    return onDevice(QStringLiteral("/opt/Tessaro/"));
}

QString client()
{
    return clientDirectory() + QLatin1String("zClient");
}

} // namespace Paths
