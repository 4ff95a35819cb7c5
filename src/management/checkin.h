// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// The document that describes the device to a management server.
namespace CheckInDocument {

/// Reads the current values from the device and its tools; returns JSON text.
QByteArray text(const QString &serial);

} // namespace CheckInDocument
