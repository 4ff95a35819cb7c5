// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QList>
#include <QStringList>

struct Readings;

namespace Table {

using Rows = QList<QStringList>;

/// Prints one table, its heading first.
void printRows(const Rows &rows);

/// Prints the figures beside their limits, as Markdown tables.
void print(const Readings &all);

} // namespace Table
