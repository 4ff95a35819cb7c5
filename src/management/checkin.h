// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// What the device tells a management server of itself.
namespace CheckInDocument {

/// Read anew from the device and its tools, as JSON text.
QByteArray text(const QString &serial);

} // namespace CheckInDocument
