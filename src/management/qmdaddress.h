// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>

/// Where the QMD management server is.
namespace QmdAddress {

/// The server's URL by "management settings": the address that DHCP has offered, or the stored one; "Unknown"
/// when that is empty. "http://" and the port 8080 are added where the address lacks them.
QString url(const QJsonObject &managementSettings);
/// An address with scheme and port; "Unknown" for an empty one.
QString complete(const QString &address);

} // namespace QmdAddress
