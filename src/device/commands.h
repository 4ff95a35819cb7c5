// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcessEnvironment>
#include <QString>

/// Command lines for the shell, and what every child gets. `ToolRun` runs them.
namespace Commands {

/// How long a tool may take.
constexpr int timeLimitMs = 30000;
/// How much of a query's output is read; a tool that prints more is ended.
constexpr int outputLimit = 16 * 1024 * 1024;

/// `value` as exactly one word of a shell command line: a plain word as it is, everything else in single
/// quotes.
QString quoted(const QString &value);

/// The command line of a device program named by its absolute path, ready for `ToolCall::command`: "sudo"
/// when asked for, the program under the device root, and the arguments as they stand.
QString line(const QString &program, const QString &arguments = QString(), bool asRoot = false);

/// The environment of every child: ours, with the programs of the device root found first.
QProcessEnvironment environment();

} // namespace Commands
