// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QCommandLineParser>

// The command line of one sub-command of kt-lab: its own help, and the option that names the device root.
class LabCommand
{
public:
    LabCommand(const QString &name, const QString &description);

    void addArgument(const QString &syntax, const QString &description);
    void addOption(const QString &name, const QString &description, const QString &value = {});

    // Reads the program's command line. Prints what is wrong, or the help, and ends the process where that is
    // due.
    void process(int fewestArguments, int mostArguments);

    QStringList arguments() const;
    QString argument(int index) const { return arguments().value(index); }
    bool isSet(const QString &option) const { return m_parser.isSet(option); }
    QString value(const QString &option) const { return m_parser.value(option); }
    QStringList values(const QString &option) const { return m_parser.values(option); }

    // A whole number, or fallback where the option was not given; what is no number ends the process.
    int number(const QString &option, int fallback) const;

    // --root, else KT_DEVICE_ROOT; ends the process where neither names a device root.
    void addRootOption();
    DeviceRoot root() const;

    [[noreturn]] void fail(const QString &reason) const;

private:
    QString m_name;
    QCommandLineParser m_parser;
};
