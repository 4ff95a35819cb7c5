// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QByteArray>
#include <QString>

/// Returns the outcome of a session in the launcher's format: {"status": number, "log": [lines]}.
QByteArray statusDocument(const SessionEnd &end);

/// Writes a temporary file and renames it, so that a reader finds the whole document or none. Returns an
/// error text, which is empty on success.
QString writeStatusFile(const QString &path, const SessionEnd &end);
