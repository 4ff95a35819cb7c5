// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/options.h"
#include "console/result.h"

#include <QString>

/// What the console shows of results. What devices send is shown without control characters, and without
/// their passwords wherever the configuration itself was not asked for.
namespace Printer {

/// One line of JSON.
QByteArray json(Command command, const Result &result, bool dryRun);
/// Text for a reader. Every line is whole; a status takes several, where only one device was asked.
QString text(Command command, const Result &result, bool dryRun);
/// The same status as one row of a table.
QString row(const Result &result);
QString heading();

} // namespace Printer
