// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/usbbus.h"

#include "device/paths.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSet>

#include <algorithm>

#include <usb.h>

Q_LOGGING_CATEGORY(lcUsbBus, "kt.device.usb")

namespace UsbBus {

namespace {

constexpr const char *folderVariable = "USB_DEVFS_PATH"; ///< libusb's own
constexpr int deviceLimit = 1024;

QString busFolder()
{
    const QString named = qEnvironmentVariable(folderVariable);
    return named.isEmpty() ? Paths::usbBus() : named;
}

/// libusb finds the device's own folder without help. For another folder the environment variable is set only
/// during this call: other threads read the environment for name look-ups, and child processes must not
/// inherit it.
void initialize(const QString &folder)
{
    const bool told = Paths::root().isEmpty() || qEnvironmentVariableIsSet(folderVariable);
    if (!told)
        qputenv(folderVariable, QFile::encodeName(folder));
    usb_init();
    if (!told)
        qunsetenv(folderVariable);
}

/// libusb does not check whether it has read a complete descriptor; an incomplete one ends with bytes of
/// another device's.
bool isWhole(const QString &folder, const struct usb_device &device)
{
    if (device.descriptor.bLength < USB_DT_DEVICE_SIZE || device.descriptor.bDescriptorType != USB_DT_DEVICE)
        return false;
    QFile file(folder + QLatin1Char('/') + QFile::decodeName(device.bus->dirname) + QLatin1Char('/')
               + QFile::decodeName(device.filename));
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        && file.read(USB_DT_DEVICE_SIZE).size() == USB_DT_DEVICE_SIZE;
}

} // namespace

QStringList identifiers()
{
    const QString folder = busFolder();
    if (!QFileInfo(folder).isDir()) {
        qCInfo(lcUsbBus).noquote() << "no USB bus in" << folder;
        return {};
    }
    initialize(folder);
    usb_find_busses();
    usb_find_devices();
    QSet<QString> found;
    int count = 0;
    for (const struct usb_bus *bus = usb_busses; bus; bus = bus->next) {
        for (const struct usb_device *device = bus->devices; device && count < deviceLimit;
             device = device->next) {
            ++count;
            if (isWhole(folder, *device))
                found += QString::asprintf("%04x:%04x", device->descriptor.idVendor,
                                           device->descriptor.idProduct);
            else
                qCWarning(lcUsbBus) << "incomplete descriptor of" << bus->dirname << device->filename;
        }
    }
    QStringList sorted = found.values();
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace UsbBus
