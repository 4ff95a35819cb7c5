// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// All absolute paths of the device. They are below the device root, which is empty on a device and is the
/// folder in the environment variable KT_DEVICE_ROOT in the lab and in tests.
namespace Paths {

QString root();
/// The device root followed by an absolute path of the device.
QString onDevice(const QString &path);
/// The path to start a program with. An absolute path is below the device root. A bare name is a program of
/// the device root if it exists there, and is left to the search path otherwise.
QString program(const QString &name);

QString stateDirectory(); ///< with a closing slash
QString configuration();
QString recoveryMarker();
QString appliedRecord();    ///< what was last carried out of the document
QString takenAddress();     ///< of the wired interface, while the cable is out
QString message();          ///< device scripts write it before they send SIGUSR1
QString connection();       ///< describes a session to the client
QString connectionStatus(); ///< the client's verdict
QString updates();          ///< with a closing slash
QString firmwareImage();    ///< the input of the installer
QString broadcastLog();
QString nameServers();
QString release();         ///< the installed firmware, an INI file
QString propertyMailbox(); ///< the device file of the board's firmware
QString usbBus();          ///< one folder for each bus, with one descriptor file for each device
QString usbIdentifiers();  ///< the names of USB vendors and products
QString dhcpOptions();     ///< an INI file from the DHCP client
QString keyboardLayouts();
QString timezones();
QString media();              ///< where USB sticks are mounted
QString caCertificates();     ///< without a closing slash
QString clientCertificates(); ///< with a closing slash
QString clientDirectory();    ///< with a closing slash
QString client();

} // namespace Paths
