// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantMap>

/// What DHCP servers offer beside addresses: the management server of the device, in the option that
/// administrators set for it.
namespace LeaseOptions {

/// The address in the options of a lease as NetworkManager names them: a host name or an IPv4 address, with
/// or without "http://" or "https://" and a port. Empty when there is none, or none that can be used.
QString managementAddress(const QVariantMap &options);

/// Puts the address where the launcher looks for it; an empty one removes the file. The file belongs to the
/// launcher's user, who removes it when the network's settings change.
bool publish(const QString &address);

} // namespace LeaseOptions
