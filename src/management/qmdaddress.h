// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>

/// The address of the QMD management server.
namespace QmdAddress {

/// The server's URL from "management settings": the stored address or, with auto-discovery, the one from
/// DHCP. "http://" and port 8080 are added if missing; an empty address gives "Unknown".
QString url(const QJsonObject &managementSettings);
/// An address with scheme and port; "Unknown" for an empty one. An IPv6 address gets its brackets, and a
/// colon without a port goes.
QString complete(const QString &address);
/// Whether a server can be reached by the completed address: an HTTP or HTTPS URL with a host.
bool isUsable(const QString &address);

} // namespace QmdAddress
