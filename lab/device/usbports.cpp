// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/usbports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

namespace {

constexpr int vendorAt = 8;
constexpr int productAt = 10;
constexpr int descriptorSize = 18;
constexpr const char *numberState = "usb-number";

struct InitialDevice
{
    const char *identifier;
    int interfaceClass;
};

constexpr InitialDevice initialDevices[] = {
    {"1d6b:0002", 0x09}, // root hub
    {"0424:9514", 0x09}, // the board's hub
    {"0424:ec00", 0xff}, // the board's Ethernet adapter
    {"f0a1:0101", 0x03}, // keyboard
    {"f0a1:0101", 0x03}, // a second one
    {"f0b2:0210", 0x01}, // headset
    {"f0c3:0301", 0x08}, // storage stick
    {"f0d4:0401", 0x0b}, // smart card reader
};

/// Returns a device descriptor, and one configuration with one interface.
QByteArray descriptors(quint16 vendor, quint16 product, int interfaceClass)
{
    const auto low = [](quint16 value) {
        return static_cast<char>(value & 0xff);
    };
    const auto high = [](quint16 value) {
        return static_cast<char>(value >> 8);
    };
    const char device[descriptorSize] = {
        18, 1, 0, 2, 0, 0, 0, 64, low(vendor), high(vendor), low(product), high(product), 0, 1, 0, 0, 0, 1};
    const char configuration[] = {9, 2, 18, 0, 1, 1, 0, static_cast<char>(0x80), 50};
    const char interface[] = {9, 4, 0, 0, 0, static_cast<char>(interfaceClass), 0, 0, 0};
    return QByteArray(device, sizeof device) + QByteArray(configuration, sizeof configuration)
        + QByteArray(interface, sizeof interface);
}

QString identifierOf(const QString &path)
{
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.read(descriptorSize) : QByteArray();
    if (bytes.size() < descriptorSize)
        return QStringLiteral("(no device)");
    return QString::asprintf("%04x:%04x", qFromLittleEndian<quint16>(bytes.constData() + vendorAt),
                             qFromLittleEndian<quint16>(bytes.constData() + productAt));
}

} // namespace

UsbPorts::UsbPorts(const DeviceRoot &root)
    : m_bus(root.file(QStringLiteral("/dev/bus/usb/001")))
    , m_root(root)
{ }

bool UsbPorts::create() const
{
    if (QFileInfo::exists(m_bus))
        return true;
    bool done = true;
    for (const InitialDevice &device : initialDevices)
        done = done && plug(QLatin1String(device.identifier), device.interfaceClass);
    return done;
}

QStringList UsbPorts::devices() const
{
    QStringList found;
    for (const QString &number : QDir(m_bus).entryList(QDir::Files, QDir::Name))
        found << number + QLatin1Char(' ') + identifierOf(m_bus + QLatin1Char('/') + number);
    return found;
}

bool UsbPorts::plug(const QString &identifier, int interfaceClass) const
{
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(QStringLiteral("([0-9A-Fa-f]{4}):([0-9A-Fa-f]{4})")));
    const QRegularExpressionMatch match = form.match(identifier);
    if (!match.hasMatch() || !QDir().mkpath(m_bus))
        return false;
    const int number = m_root.state(QLatin1String(numberState)).toInt() + 1;
    QFile file(QStringLiteral("%1/%2").arg(m_bus).arg(number, 3, 10, QLatin1Char('0')));
    const QByteArray bytes = descriptors(match.captured(1).toUShort(nullptr, 16),
                                         match.captured(2).toUShort(nullptr, 16), interfaceClass);
    return m_root.setState(QLatin1String(numberState), QString::number(number))
        && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool UsbPorts::unplug(const QString &identifier) const
{
    for (const QString &device : devices()) {
        if (device.section(QLatin1Char(' '), 1) == identifier.toLower())
            return QFile::remove(m_bus + QLatin1Char('/') + device.section(QLatin1Char(' '), 0, 0));
    }
    return false;
}
