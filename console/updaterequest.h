// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The request that tells a device where its firmware is. Nothing, and the reason, when it does not fit.
namespace UpdateRequest {

/// A URL longer than its field goes on in the file's: the device puts the two together.
std::optional<QByteArray> fromUrl(const QString &url, const QString &user, const QString &password,
                                  QString *error);
std::optional<QByteArray> fromServer(const QString &server, const QString &file, QString *error);

} // namespace UpdateRequest
