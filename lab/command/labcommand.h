// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QCommandLineParser>

/// The command line of one sub-command of kt-lab, with its own help.
class LabCommand
{
public:
    LabCommand(const QString &name, const QString &description);

    void addArgument(const QString &syntax, const QString &description);
    void addOption(const QString &name, const QString &description, const QString &value = {});

    /// Parses the program's command line. For help or an error, prints it and ends the process.
    void process(int fewestArguments, int mostArguments);

    QStringList arguments() const;
    QString argument(int index) const { return arguments().value(index); }
    bool isSet(const QString &option) const { return m_parser.isSet(option); }
    QString value(const QString &option) const { return m_parser.value(option); }
    QStringList values(const QString &option) const { return m_parser.values(option); }

    /// Returns the option's number, or the fallback without the option. An invalid number ends the process.
    int number(const QString &option, int fallback) const;

    /// Returns the device root of --root or KT_DEVICE_ROOT; ends the process without one.
    void addRootOption();
    DeviceRoot root() const;

    [[noreturn]] void fail(const QString &reason) const;

private:
    QString m_name;
    QCommandLineParser m_parser;
};
