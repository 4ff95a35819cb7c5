// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>
#include <QTemporaryDir>

// Where the device keeps its configuration.
constexpr const char *documentPath = "/var/lib/kt964/config.json";

// How a program ended, and what it printed.
struct Outcome
{
    int status = -1;
    bool crashed = false;
    QByteArray output;
    QByteArray error;
};

// A simulated device in a temporary folder, made and played by the real kt-lab.
class LabDevice
{
public:
    LabDevice() { makeAgain(); }
    void makeAgain() const;

    QString path(const char *devicePath = "") const;

    // Runs a command line (words with blanks in double quotes, '' for an empty one, then the further
    // arguments as they are) whose first word is a tool of usr/bin or a tool's path in the device; or a
    // sub-command of kt-lab on this device.
    Outcome call(const char *commandLine, const QStringList &furtherArguments = {}) const;
    Outcome lab(const char *commandLine) const;

    // Whether kt-network-config succeeds with a sub-command (and the document), and what it prints.
    bool networkConfig(const char *subCommand) const;
    QByteArray networkAnswer(const char *subCommand) const;

    void write(const char *devicePath, const QByteArray &content) const;
    QByteArray read(const char *devicePath) const;
    QStringList calls() const;

private:
    QTemporaryDir m_folder;
};
