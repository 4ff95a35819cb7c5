// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Short lines on standard output for administrators at a terminal and for scripts.
namespace Diagnostics {

/// Prints one line and adds it to the log.
void print(const QString &line);

/// Prints one line that must not reach the log because it contains a password or another credential.
void printToStandardOutputOnly(const QString &line);

} // namespace Diagnostics
