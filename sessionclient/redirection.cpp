// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/redirection.h"

#include "shared/usbidentifier.h"

#include <QDir>
#include <QJsonArray>

#include <algorithm>

namespace {

constexpr int mostDevices = 64; ///< bounds the length of the argument
constexpr int mostPorts = 16;

bool isRedirected(const QJsonObject &settings, const char *deviceClass)
{
    const QString byClass = QStringLiteral("default");
    const QString general = settings.value(QLatin1String("general policy")).toString(byClass);
    const QString own = settings.value(QLatin1String(deviceClass)).toString();
    return (general == byClass ? own : general) == QLatin1String("generic");
}

/// The single devices that are redirected, whatever the policies of their classes.
QStringList redirectedDevices(const QJsonArray &devices)
{
    QStringList identifiers;
    for (const QJsonValue &device : devices) {
        const QString identifier = (device[QLatin1String("vid")].toString() + QLatin1Char(':')
                                    + device[QLatin1String("pid")].toString())
                                       .toLower();
        const QString choice = device[QLatin1String("redirection")].toString();
        if (choice.compare(QLatin1String("Redirect"), Qt::CaseInsensitive) == 0
            && UsbIdentifier::isValid(identifier) && !UsbIdentifier::isOfTerminal(identifier))
            identifiers += identifier;
    }
    identifiers.removeDuplicates();
    return identifiers.mid(0, mostDevices);
}

/// FreeRDP finds no serial ports by itself. The session sees them as COM1, COM2, ...
QStringList serialOptions(const QStringList &ports)
{
    QStringList options;
    for (const QString &port : ports.mid(0, mostPorts))
        options += QStringLiteral("/serial:COM%1,%2").arg(options.size() + 1).arg(port);
    return options;
}

} // namespace

QStringList redirectionOptions(const QJsonObject &configuration, const QStringList &serialPorts)
{
    const QJsonObject settings = configuration.value(QLatin1String("redirection settings")).toObject();
    QStringList options;
    const QStringList devices = redirectedDevices(settings.value(QLatin1String("custom devices")).toArray());
    if (!devices.isEmpty())
        options += QStringLiteral("/usb:id:") + devices.join(QLatin1Char('#'));
    if (isRedirected(settings, "mass storage"))
        options += QStringLiteral("/drive:hotplug,*");
    if (isRedirected(settings, "printers"))
        options += QStringLiteral("/printer");
    if (isRedirected(settings, "smart cards"))
        options += QStringLiteral("/smartcard");
    if (isRedirected(settings, "serial ports"))
        options += serialOptions(serialPorts);
    return options;
}

QStringList usbSerialPorts()
{
    // The device root is part of the path, so that the options work in the lab too.
    const QDir folder(qEnvironmentVariable("KT_DEVICE_ROOT") + QStringLiteral("/dev"));
    QStringList names = folder.entryList({QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")},
                                         QDir::System | QDir::Files);
    // Two digits after one: the names have no leading zeros.
    std::stable_sort(names.begin(), names.end(),
                     [](const QString &left, const QString &right) { return left.size() < right.size(); });
    for (QString &name : names)
        name = folder.filePath(name);
    return names;
}
