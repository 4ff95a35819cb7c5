// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/expected.h"

#include <QByteArray>
#include <QString>

/// Builds the request that tells a device the source of its firmware. Fails when a text does not fit.
namespace UpdateRequest {

/// A URL that is longer than its field continues in the file's field; the device joins the two.
Expected<QByteArray> fromUrl(const QString &url, const QString &user, const QString &password);
Expected<QByteArray> fromServer(const QString &server, const QString &file);

} // namespace UpdateRequest
