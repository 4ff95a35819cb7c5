// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QByteArray>
#include <QString>

// The outcome of a session as the launcher reads it: {"status": number, "log": [lines]}.
QByteArray statusDocument(const SessionEnd &end);

// Written beside its final name and renamed, so that a reader finds all of it or nothing. On failure the
// fault is returned; it is empty on success.
QString writeStatusFile(const QString &path, const SessionEnd &end);
