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
/// An address with scheme and port; "Unknown" for an empty one.
QString complete(const QString &address);

} // namespace QmdAddress
