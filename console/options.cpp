// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/options.h"

#include "update/wireformat.h"

#include <QCommandLineParser>

#include <optional>
#include <vector>

namespace {

constexpr int mostParallel = 500; // each device in progress needs a socket
constexpr int mostRetries = 20;
constexpr double shortestTimeoutSeconds = 0.05;
constexpr double longestTimeoutSeconds = 600;

/// One form of a command: its words, then its arguments.
struct CommandForm
{
    Command command;
    QStringList words;
    QStringList arguments;
    QString description;
};

/// A form with more words precedes the shorter one.
const std::vector<CommandForm> &commandForms()
{
    const auto form = [](Command command, const char *words, const char *arguments, const char *description) {
        const auto split = [](const char *list) {
            return QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        return CommandForm{command, split(words), split(arguments), QString::fromLatin1(description)};
    };
    static const std::vector<CommandForm> forms = {
        form(Command::Info, "info", "", "Shows identity, firmware, network and session."),
        form(Command::GetConfig, "get-config", "", "Prints the configuration, passwords included."),
        form(Command::SetConfig, "set-config", "FILE", "Merges FILE into the configuration."),
        form(Command::Reset, "reset", "", "Restarts the device."),
        form(Command::UpdateLatest, "update latest", "",
             "Installs the newest firmware of the Corvid servers."),
        form(Command::UpdateServer, "update server", "SERVER FILE", "Installs a file of this Corvid server."),
        form(Command::UpdateUrl, "update", "URL", "Installs from an ftp:// or http:// URL."),
    };
    return forms;
}

struct OptionRow
{
    const char *names; ///< short and long
    const char *value;
    const char *description;
    std::optional<Command> onlyWith = {};
};

const OptionRow optionRows[] = {
    {"t targets", "FILE", "Reads addresses and names from FILE, one on each line; \"#\" begins a comment."},
    {"s subnet", "", "Finds the devices in the subnets of this machine."},
    {"broadcast", "ADDRESS", "Finds the devices that reply to this broadcast address."},
    {"j json", "", "Prints one JSON object for each device, one on each line."},
    {"o output", "FOLDER", "get-config: writes FOLDER/ADDRESS.json, readable by you alone.",
     Command::GetConfig},
    {"n dry-run", "", "set-config: shows the changes and makes none.", Command::SetConfig},
    {"y yes", "", "Changes a subnet's devices without confirmation."},
    {"u user", "NAME", "update URL: the user name; \"anonymous\" when absent.", Command::UpdateUrl},
    {"password-file", "FILE", "update URL: the first line of FILE is the password.", Command::UpdateUrl},
    {"timeout", "SECONDS", "Waits this long for each reply (3), or for all replies of a subnet."},
    {"retries", "NUMBER", "Retries a request this many times (2)."},
    {"parallel", "NUMBER", "Works with this many devices at once (300)."},
    {"port", "PORT", "The port on which devices listen (1027)."},
    {"q quiet", "", "Shows no progress line."},
    {"h help", "", "Shows this help."},
    {"version", "", "Shows the version."},
};

QStringList namesOf(const OptionRow &row)
{
    return QString::fromLatin1(row.names).split(QLatin1Char(' '));
}

void declare(QCommandLineParser &parser)
{
    for (const OptionRow &row : optionRows)
        parser.addOption(QCommandLineOption(namesOf(row), QString::fromLatin1(row.description),
                                            QString::fromLatin1(row.value)));
    parser.addPositionalArgument(QStringLiteral("COMMAND"), QStringLiteral("A command with its arguments."));
    parser.addPositionalArgument(QStringLiteral("DEVICE"),
                                 QStringLiteral("An address or a name; any number."),
                                 QStringLiteral("[DEVICE...]"));
}

QString commandHelp()
{
    QString text = QStringLiteral("Manages KT964 devices from the command line.\n\nCommands:\n");
    for (const CommandForm &form : commandForms())
        text += QStringLiteral("  %1  %2\n")
                    .arg((form.words + form.arguments).join(QLatin1Char(' ')), -25)
                    .arg(form.description);
    return text;
}

/// Converts the parser's result. Keeps the first error.
class OptionReader
{
public:
    explicit OptionReader(const QCommandLineParser &parser)
        : m_parser(parser)
    {
        readCommand(m_parser.positionalArguments());
        readValues();
        readNumbers();
        checkCombination();
    }

    QString error() const { return m_error; }
    Options options() const { return m_options; }

private:
    void readCommand(QStringList words);
    void readValues();
    void readNumbers();
    int number(const char *option, int preset, int low, int high);
    void checkCombination();
    void refuse(const QString &error)
    {
        if (m_error.isEmpty())
            m_error = error;
    }

    QString value(const char *option) const { return m_parser.value(QLatin1String(option)); }
    bool isSet(const char *option) const { return m_parser.isSet(QLatin1String(option)); }

    const QCommandLineParser &m_parser;
    Options m_options;
    QString m_error;
};

void OptionReader::readCommand(QStringList words)
{
    if (words.isEmpty())
        return refuse(QStringLiteral("no command given"));
    for (const CommandForm &form : commandForms()) {
        if (words.mid(0, form.words.size()) != form.words)
            continue;
        words = words.mid(form.words.size());
        const QStringList arguments = words.mid(0, form.arguments.size());
        m_options.command = form.command;
        m_options.addresses = words.mid(arguments.size());
        if (form.command == Command::UpdateUrl && !arguments.value(0).contains(QLatin1String("://")))
            return refuse(QStringLiteral("update needs latest, server or a URL with its scheme, not \"%1\"")
                              .arg(arguments.value(0)));
        if (arguments.size() < form.arguments.size())
            return refuse(QStringLiteral("%1 needs %2")
                              .arg(form.words.join(QLatin1Char(' ')), form.arguments.join(QLatin1Char(' '))));
        if (form.command == Command::SetConfig)
            m_options.file = arguments.value(0);
        else
            m_options.updateSource = arguments.value(0);
        m_options.updateFile = arguments.value(1);
        return;
    }
    refuse(QStringLiteral("unknown command \"%1\"").arg(words.first()));
}

void OptionReader::readValues()
{
    m_options.targetsFile = value("targets");
    m_options.subnet = isSet("subnet");
    m_options.broadcast = value("broadcast");
    m_options.outputFolder = value("output");
    m_options.user = value("user");
    m_options.passwordFile = value("password-file");
    m_options.json = isSet("json");
    m_options.dryRun = isSet("dry-run");
    m_options.yes = isSet("yes");
    m_options.quiet = isSet("quiet");
}

void OptionReader::readNumbers()
{
    m_options.retries = number("retries", m_options.retries, 0, mostRetries);
    m_options.parallel = number("parallel", m_options.parallel, 1, mostParallel);
    m_options.port = static_cast<quint16>(number("port", WireFormat::devicePort, 1, 65535));
    if (!isSet("timeout"))
        return;
    bool isNumber = false;
    const double seconds = value("timeout").toDouble(&isNumber);
    // A comparison with "not a number" is false.
    if (isNumber && seconds >= shortestTimeoutSeconds && seconds <= longestTimeoutSeconds)
        m_options.timeoutMs = qRound(seconds * 1000);
    else
        refuse(QStringLiteral("--timeout takes seconds, from %1 to %2")
                   .arg(shortestTimeoutSeconds)
                   .arg(longestTimeoutSeconds));
}

int OptionReader::number(const char *option, int preset, int low, int high)
{
    if (!isSet(option))
        return preset;
    bool isNumber = false;
    const int number = value(option).toInt(&isNumber);
    if (isNumber && number >= low && number <= high)
        return number;
    refuse(QStringLiteral("--%1 takes a number from %2 to %3").arg(QLatin1String(option)).arg(low).arg(high));
    return preset;
}

void OptionReader::checkCombination()
{
    for (const OptionRow &row : optionRows) {
        const QString name = namesOf(row).last();
        if (row.onlyWith && *row.onlyWith != m_options.command && m_parser.isSet(name))
            refuse(QStringLiteral("--%1 does not go with %2").arg(name, nameOf(m_options.command)));
    }
    if (m_options.addresses.isEmpty() && m_options.targetsFile.isEmpty() && !m_options.searchesSubnet())
        refuse(QStringLiteral("no device given: name addresses, or use --targets, --subnet or --broadcast"));
    if (m_options.file == QLatin1String("-") && m_options.targetsFile == QLatin1String("-"))
        refuse(QStringLiteral("the configuration and the targets cannot both come from standard input"));
}

} // namespace

bool changesDevice(Command command)
{
    return command != Command::Info && command != Command::GetConfig;
}

QString nameOf(Command command)
{
    for (const CommandForm &form : commandForms()) {
        if (form.command == command)
            return form.words.first();
    }
    return QString();
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    declare(parser);
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
    const OptionReader reader(parser);
    line.options = reader.options();
    line.error = reader.error();
    line.kind = line.error.isEmpty() ? CommandLine::Kind::Run : CommandLine::Kind::Wrong;
    return line;
}

QString helpText()
{
    QCommandLineParser parser;
    declare(parser);
    parser.setApplicationDescription(commandHelp());
    return parser.helpText() + QString::fromLatin1(R"(
Where FILE is "-", standard input is read.

The environment variable KT_CONSOLE_PASSWORD can hold the password of an
update. Everything, passwords included, crosses the network as plain text.

When no reply arrives:
  info, get-config  The request is retried.
  set-config        The configuration is read again. FILE is sent again only
                    when it is not merged yet.
  reset, update     The request is sent only once. Whether the device received
                    it is unknown.

set-config reads the device's configuration first and sends only the
differences. A device ignores unknown keys and values of another type. It
replaces an array as a whole. FILE may omit its "configuration version"; one of
an older version is upgraded. The device then shows its launcher anew, after the
running session if there is one.

During a firmware update a device refuses requests. During a session it refuses
an update for now, and starts it when the session ends.

Exit status:
  0  every device did its work
  1  a device refused, or sent an unusable reply
  2  the command line is wrong
  3  a device did not answer, and none refused
  4  trouble on this machine: a file, an unknown name, another configuration
     version; or you declined

Examples:
  kt-console info --subnet
  kt-console get-config 10.0.3.17 > ward3.json
  kt-console set-config general.json --targets ward3.txt --dry-run
  KT_CONSOLE_PASSWORD=secret kt-console update ftp://10.0.0.2/kt964.img \
      --user firmware 10.0.3.17
)");
}
