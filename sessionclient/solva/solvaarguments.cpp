// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "solva/solvaarguments.h"

#include "session/connectionfile.h"

#include <QHash>

#include <cstring>

namespace {

constexpr char passwordOption[] = "--password=";

// Where an option's value goes. Those without a place are taken and have no effect here.
QHash<QString, QString *> places(SolvaArguments *taken)
{
    SessionDescription *session = &taken->session;
    return {{QStringLiteral("--server"), &taken->server},
            {QStringLiteral("--desktop"), &taken->desktop},
            {QStringLiteral("--username"), &session->user},
            {QStringLiteral("--password"), &session->password},
            {QStringLiteral("--application"), &session->program},
            {QStringLiteral("--application-dir"), &session->directory},
            {QStringLiteral("--protocol"), nullptr},
            {QStringLiteral("--experience"), nullptr},
            {QStringLiteral("--keyboard-layout"), nullptr},
            {QStringLiteral("--sda-position"), nullptr}};
}

} // namespace

SolvaArguments parseSolvaArguments(const QStringList &arguments)
{
    SolvaArguments taken;
    const QHash<QString, QString *> known = places(&taken);
    bool connects = false;
    for (const QString &argument : arguments) {
        const QString option = argument.section(QLatin1Char('='), 0, 0);
        const QString value = argument.section(QLatin1Char('='), 1);
        if (argument == QLatin1String("-c"))
            connects = true;
        else if (argument == QLatin1String("--use-smsc-sda"))
            taken.session.secondDisplay = true;
        else if (!known.contains(option) || !argument.contains(QLatin1Char('=')))
            taken.fault = QStringLiteral("what is %1?").arg(option);
        else if (hasControlCharacter(value))
            taken.fault = QStringLiteral("%1 contains a control character").arg(option);
        else if (QString *place = known.value(option))
            *place = value;
    }
    if (taken.fault.isEmpty() && (!connects || taken.server.isEmpty()))
        taken.fault = QStringLiteral("-c and --server are needed");
    taken.session.logOn = true;
    taken.session.sound = true;
    taken.session.startProgram = !taken.session.program.isEmpty();
    return taken;
}

QStringList takeArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromUtf8(argv[i]));
        const std::size_t length = sizeof passwordOption - 1;
        if (std::strncmp(argv[i], passwordOption, length) == 0)
            std::memset(argv[i] + length, '*', std::strlen(argv[i] + length));
    }
    return arguments;
}
