// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

#include <vector>

/// What every device tool does alike: it finds its command by the name it was called by, explains itself with
/// --help, ends at its time limit at the latest, and says in one line what went wrong.
namespace Tool {

/// The exit status of every tool.
enum Status { Done = 0, Failed = 1, WrongUsage = 2 };

/// One name of a program, and what it does under that name.
struct Command
{
    const char *name;
    const char *usage; ///< the arguments, on one line
    const char *help;  ///< what it does, in a few lines; each ends with a line end
    int limitSeconds;
    int (*run)(const QStringList &arguments); ///< returns a Status, or WrongUsage for arguments it rejects
};

/// The body of main(). A program of one name obeys its only command whatever it is called.
int main(int argc, char **argv, const std::vector<Command> &commands);

/// The name that the program was called by.
QString name();

/// Writes "NAME: REASON" to standard error, as one line without control characters, and returns Failed.
int fail(const QString &reason);
/// The same for arguments that the tool rejects; returns WrongUsage.
int reject(const QString &reason);
/// Writes one line to standard output, at once.
void print(const QString &line);

/// Ends the program with Failed after so many seconds, whatever it does then. It says so on standard error,
/// and writes `lastWords` to standard output before. A later call replaces an earlier one.
void limit(int seconds, const QByteArray &lastWords = QByteArray());

} // namespace Tool
