// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "command/servercommand.h"
#include "lab-peers/firmwareserver.h"

namespace {

void addOptions(LabCommand *command)
{
    command->addArgument(QStringLiteral("FOLDER"), QStringLiteral("The folder with the files."));
    ServerCommand::addOptions(command, FirmwareServer::defaultPort);
    command->addOption(QStringLiteral("user"), QStringLiteral("Requires this name and password."),
                       QStringLiteral("NAME:PASSWORD"));
    command->addOption(
        QStringLiteral("mode"),
        QStringLiteral("normal, slow, truncated, stalled, silent, challenge, redirect, 404 or 500."),
        QStringLiteral("MODE"));
    command->addOption(QStringLiteral("piece"), QStringLiteral("The piece size of the mode slow."),
                       QStringLiteral("BYTES"));
    command->addOption(QStringLiteral("delay"), QStringLiteral("The pause between two pieces."),
                       QStringLiteral("MS"));
    command->addOption(QStringLiteral("to"), QStringLiteral("The target of the mode redirect."),
                       QStringLiteral("URL"));
}

void setUp(FirmwareServer *server, const LabCommand &command)
{
    const QString user = command.value(QStringLiteral("user"));
    if (!user.isEmpty())
        server->setUser(user.section(QLatin1Char(':'), 0, 0), user.section(QLatin1Char(':'), 1));
    const QString word = command.value(QStringLiteral("mode"));
    const auto mode = FirmwareServer::modeOf(word.isEmpty() ? QStringLiteral("normal") : word);
    if (!mode)
        command.fail(QStringLiteral("unknown mode: %1").arg(word));
    server->setMode(*mode);
    server->setPace(command.number(QStringLiteral("piece"), 1024),
                    command.number(QStringLiteral("delay"), 1000));
    server->setRedirect(QUrl(command.value(QStringLiteral("to"))));
}

} // namespace

int firmwareServerCommand()
{
    LabCommand command(QStringLiteral("firmware-server"),
                       QStringLiteral("Plays a web server for firmware; prints each request."));
    addOptions(&command);
    command.process(1, 1);
    FirmwareServer server(command.argument(0));
    setUp(&server, command);
    return ServerCommand::run(&server, command, FirmwareServer::defaultPort);
}
