// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/labcommand.h"

#include "lab-device/output.h"

#include <QCoreApplication>

#include <cstdlib>

LabCommand::LabCommand(const QString &name, const QString &description)
    : m_name(name)
{
    m_parser.setApplicationDescription(description);
    m_parser.addHelpOption();
    m_parser.addPositionalArgument(name, QString(), name);
}

void LabCommand::addArgument(const QString &syntax, const QString &description)
{
    m_parser.addPositionalArgument(syntax, description, syntax);
}

void LabCommand::addOption(const QString &name, const QString &description, const QString &value)
{
    m_parser.addOption(QCommandLineOption(name, description, value));
}

void LabCommand::process(int fewestArguments, int mostArguments)
{
    m_parser.process(*QCoreApplication::instance());
    const int count = arguments().size();
    if (count < fewestArguments || count > mostArguments)
        fail(QStringLiteral("wrong number of arguments: %1, see kt-lab %2 --help").arg(count).arg(m_name));
}

QStringList LabCommand::arguments() const
{
    return m_parser.positionalArguments().mid(1);
}

int LabCommand::number(const QString &option, int fallback) const
{
    if (!isSet(option))
        return fallback;
    bool isNumber = false;
    const int number = value(option).toInt(&isNumber);
    if (!isNumber || number < 0)
        fail(QStringLiteral("--%1 needs a number, not %2").arg(option, value(option)));
    return number;
}

void LabCommand::addRootOption()
{
    addOption(QStringLiteral("root"),
              QStringLiteral("The device root; by default the value of KT_DEVICE_ROOT."),
              QStringLiteral("DIR"));
}

DeviceRoot LabCommand::root() const
{
    const QString named = value(QStringLiteral("root"));
    DeviceRoot root(named.isEmpty() ? qEnvironmentVariable("KT_DEVICE_ROOT") : named);
    if (!root.isValid())
        fail(QStringLiteral(
            "no device root: create one with make-root, then set --root DIR or KT_DEVICE_ROOT"));
    return root;
}

void LabCommand::fail(const QString &reason) const
{
    printError(QStringLiteral("kt-lab %1: %2").arg(m_name, reason));
    std::exit(2);
}
