// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// The one place where the device's tools are run.
namespace Commands {

/// How long a tool may keep us waiting.
constexpr int timeLimitMs = 30000;
/// How much of a query's output is read; a tool that prints more is ended.
constexpr int outputLimit = 16 * 1024 * 1024;

/// Runs a command line through the shell and waits for its end; its status is ignored. A command that is
/// still running after `timeLimitMs` goes on without us.
void runShell(const QString &commandLine);

/// Runs a program with an argument list and returns its standard output. A program that is missing answers
/// nothing; one that is still running after `limitMs` is ended and what it had printed is returned.
QByteArray query(const QString &program, const QStringList &arguments, int limitMs = timeLimitMs);

/// `value` as exactly one word of a shell command line: a plain word as it is, everything else in single
/// quotes.
QString quoted(const QString &value);

/// The command line of a device program named by its absolute path, ready for `runShell`: "sudo" when asked
/// for, the program under the device root, and the arguments as they stand.
QString line(const QString &program, const QString &arguments = QString(), bool asRoot = false);

/// The environment of every child: ours, with the programs of the device root found first.
QProcessEnvironment environment();

} // namespace Commands
