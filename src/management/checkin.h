// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

class JSONStatus;

/// The document that describes the device to a management server.
namespace CheckInDocument {

/// As JSON text.
QByteArray text(const QString &serial, const JSONStatus &status);

} // namespace CheckInDocument
