// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "solva/solvaarguments.h"

#include "session/connectionfile.h"

#include <QCommandLineParser>

#include <cstring>

namespace {

constexpr char passwordOption[] = "--password=";

QString controlCharacterError(const QCommandLineParser &parser)
{
    for (const QString &option : parser.optionNames()) {
        if (hasControlCharacter(parser.value(option)))
            return QStringLiteral("--%1 contains a control character").arg(option);
    }
    return QString();
}

} // namespace

SolvaArguments parseSolvaArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const char *flag : {"c", "use-smsc-sda"})
        parser.addOption(QCommandLineOption(QLatin1String(flag)));
    // The last four have no effect here.
    for (const char *option : {"server", "desktop", "username", "password", "application", "application-dir",
                               "protocol", "experience", "keyboard-layout", "sda-position"})
        parser.addOption(QCommandLineOption(QLatin1String(option), QString(), QStringLiteral("value")));
    const auto value = [&parser](const char *option) {
        return parser.value(QLatin1String(option));
    };

    SolvaArguments parsed;
    if (!parser.parse(arguments))
        parsed.error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        parsed.error = QStringLiteral("unexpected argument");
    else
        parsed.error = controlCharacterError(parser);
    if (!parsed.error.isEmpty())
        return parsed;
    parsed.server = value("server");
    parsed.desktop = value("desktop");
    parsed.session.user = value("username");
    parsed.session.password = value("password");
    parsed.session.program = value("application");
    parsed.session.directory = value("application-dir");
    parsed.session.secondDisplay = parser.isSet(QStringLiteral("use-smsc-sda"));
    parsed.session.startProgram = !parsed.session.program.isEmpty();
    parsed.session.logOn = true;
    parsed.session.sound = true;
    if (!parser.isSet(QStringLiteral("c")) || parsed.server.isEmpty())
        parsed.error = QStringLiteral("-c and --server are required");
    return parsed;
}

QStringList readArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromUtf8(argv[i]));
        const std::size_t length = sizeof passwordOption - 1;
        if (std::strncmp(argv[i], passwordOption, length) == 0)
            std::memset(argv[i] + length, '*', std::strlen(argv[i] + length));
    }
    return arguments;
}
