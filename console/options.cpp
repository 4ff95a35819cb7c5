// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/options.h"

#include "update/wireformat.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace {

constexpr int mostParallel = 500; // each device that is being asked holds a socket
constexpr int mostRetries = 20;
constexpr double longestTimeoutSeconds = 600;

void addOptions(QCommandLineParser &parser)
{
    const auto flag = [&](const QStringList &names) {
        parser.addOption(QCommandLineOption(names));
    };
    const auto value = [&](const QStringList &names) {
        parser.addOption(QCommandLineOption(names, QString(), QStringLiteral("value")));
    };
    flag({QStringLiteral("h"), QStringLiteral("help")});
    flag({QStringLiteral("version")});
    flag({QStringLiteral("s"), QStringLiteral("subnet")});
    flag({QStringLiteral("j"), QStringLiteral("json")});
    flag({QStringLiteral("n"), QStringLiteral("dry-run")});
    flag({QStringLiteral("y"), QStringLiteral("yes")});
    flag({QStringLiteral("q"), QStringLiteral("quiet")});
    value({QStringLiteral("t"), QStringLiteral("targets")});
    value({QStringLiteral("broadcast")});
    value({QStringLiteral("o"), QStringLiteral("output")});
    value({QStringLiteral("u"), QStringLiteral("user")});
    value({QStringLiteral("password-file")});
    value({QStringLiteral("timeout")});
    value({QStringLiteral("retries")});
    value({QStringLiteral("parallel")});
    value({QStringLiteral("port")});
}

/// A whole number of an option, or nothing and the reason.
std::optional<int> number(const QCommandLineParser &parser, const QString &name, int preset, int low,
                          int high, QString *error)
{
    if (!parser.isSet(name))
        return preset;
    bool ok = false;
    const int value = parser.value(name).toInt(&ok);
    if (ok && value >= low && value <= high)
        return value;
    *error = QStringLiteral("--%1 takes a number from %2 to %3").arg(name).arg(low).arg(high);
    return std::nullopt;
}

QString takeNumbers(const QCommandLineParser &parser, Options *options)
{
    QString error;
    const auto retries = number(parser, QStringLiteral("retries"), options->retries, 0, mostRetries, &error);
    const auto parallel
        = number(parser, QStringLiteral("parallel"), options->parallel, 1, mostParallel, &error);
    const auto port = number(parser, QStringLiteral("port"), WireFormat::devicePort, 1, 65535, &error);
    if (!retries || !parallel || !port)
        return error;
    options->retries = *retries;
    options->parallel = *parallel;
    options->port = static_cast<quint16>(*port);
    if (parser.isSet(QStringLiteral("timeout"))) {
        bool ok = false;
        const double seconds = parser.value(QStringLiteral("timeout")).toDouble(&ok);
        if (!ok || !(seconds >= 0.05 && seconds <= longestTimeoutSeconds))
            return QStringLiteral("--timeout takes seconds, from 0.05 to %1").arg(longestTimeoutSeconds);
        options->timeoutMs = qRound(seconds * 1000);
    }
    return {};
}

/// Takes what belongs to "update" off the words.
QString takeUpdate(QStringList &words, Options *options)
{
    if (words.isEmpty())
        return QStringLiteral("update wants to know from where: latest, a URL, or server SERVER FILE");
    const QString source = words.takeFirst();
    if (source == QLatin1String("latest")) {
        options->command = Command::UpdateLatest;
    } else if (source == QLatin1String("server")) {
        if (words.size() < 2)
            return QStringLiteral("update server wants the server's name or address and the file");
        options->command = Command::UpdateServer;
        options->updateSource = words.takeFirst();
        options->updateFile = words.takeFirst();
    } else if (source.contains(QLatin1String("://"))) {
        options->command = Command::UpdateUrl;
        options->updateSource = source;
    } else {
        return QStringLiteral("update takes latest, a URL with its scheme, or server: not \"%1\"")
            .arg(source);
    }
    return {};
}

QString takeCommand(QStringList &words, Options *options)
{
    if (words.isEmpty())
        return QStringLiteral("no command given");
    const QString command = words.takeFirst();
    if (command == QLatin1String("update"))
        return takeUpdate(words, options);
    for (const Command known : {Command::Info, Command::GetConfig, Command::SetConfig, Command::Reset}) {
        if (command != nameOf(known))
            continue;
        options->command = known;
        if (known != Command::SetConfig)
            return {};
        if (words.isEmpty())
            return QStringLiteral("set-config wants the file with the configuration");
        options->file = words.takeFirst();
        return {};
    }
    return QStringLiteral("unknown command \"%1\"").arg(command);
}

QString misplacedOption(const QCommandLineParser &parser, const Options &options)
{
    const auto only = [&](const QString &name, std::initializer_list<Command> commands) {
        return parser.isSet(name)
                && std::find(commands.begin(), commands.end(), options.command) == commands.end()
            ? QStringLiteral("--%1 does not go with %2").arg(name, nameOf(options.command))
            : QString();
    };
    for (const QString &error : {only(QStringLiteral("dry-run"), {Command::SetConfig}),
                                 only(QStringLiteral("output"), {Command::GetConfig}),
                                 only(QStringLiteral("user"), {Command::UpdateUrl}),
                                 only(QStringLiteral("password-file"), {Command::UpdateUrl})}) {
        if (!error.isEmpty())
            return error;
    }
    if (options.addresses.isEmpty() && options.targetsFile.isEmpty() && !options.asksSubnet())
        return QStringLiteral("no device given: name addresses, or use --targets, --subnet or --broadcast");
    if (options.file == QLatin1String("-") && options.targetsFile == QLatin1String("-"))
        return QStringLiteral("the configuration and the targets cannot both come from standard input");
    return {};
}

QString takeOptions(const QCommandLineParser &parser, Options *options)
{
    options->targetsFile = parser.value(QStringLiteral("targets"));
    options->subnet = parser.isSet(QStringLiteral("subnet"));
    options->broadcast = parser.value(QStringLiteral("broadcast"));
    options->outputFolder = parser.value(QStringLiteral("output"));
    options->user = parser.value(QStringLiteral("user"));
    options->passwordFile = parser.value(QStringLiteral("password-file"));
    options->json = parser.isSet(QStringLiteral("json"));
    options->dryRun = parser.isSet(QStringLiteral("dry-run"));
    options->yes = parser.isSet(QStringLiteral("yes"));
    options->quiet = parser.isSet(QStringLiteral("quiet"));
    return takeNumbers(parser, options);
}

} // namespace

bool changesDevice(Command command)
{
    return command != Command::Info && command != Command::GetConfig;
}

QString nameOf(Command command)
{
    switch (command) {
    case Command::Info:
        return QStringLiteral("info");
    case Command::GetConfig:
        return QStringLiteral("get-config");
    case Command::SetConfig:
        return QStringLiteral("set-config");
    case Command::Reset:
        return QStringLiteral("reset");
    case Command::UpdateLatest:
    case Command::UpdateUrl:
    case Command::UpdateServer:
        break;
    }
    return QStringLiteral("update");
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    CommandLine line;
    if (!parser.parse(arguments)) {
        line.error = parser.errorText();
        return line;
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        line.kind
            = parser.isSet(QStringLiteral("help")) ? CommandLine::Kind::Help : CommandLine::Kind::Version;
        return line;
    }
    QStringList words = parser.positionalArguments();
    line.error = takeCommand(words, &line.options);
    line.options.addresses = words;
    if (line.error.isEmpty())
        line.error = takeOptions(parser, &line.options);
    if (line.error.isEmpty())
        line.error = misplacedOption(parser, line.options);
    if (line.error.isEmpty())
        line.kind = CommandLine::Kind::Run;
    return line;
}
