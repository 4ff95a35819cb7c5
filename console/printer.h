// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/options.h"
#include "console/result.h"

#include <QString>

/// Formats results for output. It replaces control characters in a device's texts, and masks passwords except
/// in a configuration that the user requested.
namespace Printer {

/// Returns one line of JSON.
QByteArray json(Command command, const Result &result, bool dryRun);
/// Returns complete lines of text: several for a status, one for other results.
QString text(Command command, const Result &result, bool dryRun);
/// Returns a status as one row of a table.
QString row(const Result &result);
QString heading();

} // namespace Printer
