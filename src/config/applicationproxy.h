// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QNetworkProxy>

/// The one proxy of every connection that the program makes.
namespace ApplicationProxy {

/// The stored "proxy" settings as a proxy; none where they are not enabled.
QNetworkProxy fromSettings(const QJsonObject &proxy);
/// Puts it in force for the whole process. True when it is another than before.
bool install(const QNetworkProxy &proxy);

} // namespace ApplicationProxy
