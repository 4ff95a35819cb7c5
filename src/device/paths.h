// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Every absolute path of the device. All of them stand under the device root, which is empty on a device and
/// the folder named by the environment variable KT_DEVICE_ROOT in the lab and in tests.
namespace Paths {

QString root();
/// The device root in front of an absolute path of the device.
QString onDevice(const QString &path);
/// Where a program is started from: an absolute path gets the device root in front; a bare name is one of the
/// device root's own programs if it has it, and is left to the search path otherwise.
QString program(const QString &name);

QString stateDirectory(); ///< with a closing slash
QString configuration();
QString recoveryMarker();
QString message();          ///< written by device scripts before they send SIGUSR1
QString connection();       ///< describes a session to the client
QString connectionStatus(); ///< the client's verdict
QString updates();          ///< with a closing slash
QString firmwareImage();    ///< what the installer takes
QString broadcastLog();
QString nameServers();
QString release();         ///< which firmware is installed, an INI file
QString propertyMailbox(); ///< the board's firmware answers there
QString usbBus();          ///< a folder for each bus, in it a descriptor file for each device
QString usbIdentifiers();  ///< the names of USB vendors and products
QString dhcpOptions();     ///< an INI file left by the DHCP client
QString keyboardLayouts();
QString timezones();
QString media();              ///< where USB sticks are mounted
QString caCertificates();     ///< without a closing slash
QString clientCertificates(); ///< with a closing slash
QString clientDirectory();    ///< with a closing slash
QString client();

} // namespace Paths
