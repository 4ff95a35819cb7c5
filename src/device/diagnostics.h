// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The short lines on standard output by which an administrator at a terminal, and a script, follow the
/// program.
namespace Diagnostics {

/// Prints one line, which the log keeps.
void print(const QString &line);

/// Prints one line that the log never sees: one that holds a password or another credential.
void printToStandardOutputOnly(const QString &line);

} // namespace Diagnostics
