// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "command/servercommand.h"
#include "lab-peers/brokerserver.h"

namespace {

/// Parses "NAME=ADDRESS". A desktop without an address gets the broker's own.
BrokerDesktop desktop(const QString &words, const QString &ownAddress)
{
    const int sign = words.lastIndexOf(QLatin1Char('='));
    return sign < 0 ? BrokerDesktop{words, ownAddress} : BrokerDesktop{words.left(sign), words.mid(sign + 1)};
}

void addUser(BrokerServer *broker, const LabCommand &command, const QString &words)
{
    const QStringList parts = words.split(QLatin1Char(':'));
    if (parts.size() < 3 || parts.constFirst().isEmpty())
        command.fail(QStringLiteral("--user needs NAME:PASSWORD:DESKTOP,..., not %1").arg(words));
    QVector<BrokerDesktop> desktops;
    const QStringList names = parts.mid(2).join(QLatin1Char(':')).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &name : names)
        desktops.append(desktop(name, command.value(QStringLiteral("address"))));
    broker->addUser(parts.at(0), parts.at(1), desktops);
}

void addOptions(LabCommand *command)
{
    ServerCommand::addOptions(command, BrokerServer::defaultPort);
    command->addOption(
        QStringLiteral("user"),
        QStringLiteral("A user and the user's desktops, each NAME or NAME=ADDRESS. Once per user."),
        QStringLiteral("NAME:PASSWORD:DESKTOP,..."));
    command->addOption(QStringLiteral("mode"),
                       QStringLiteral("normal, slow, 500, cut, huge, empty or no-line-ends."),
                       QStringLiteral("MODE"));
    command->addOption(QStringLiteral("delay"), QStringLiteral("The delay of the mode slow."),
                       QStringLiteral("MS"));
    command->addOption(QStringLiteral("plain"), QStringLiteral("Uses HTTP instead of HTTPS."));
}

void setUp(BrokerServer *broker, const LabCommand &command)
{
    const QStringList users = command.values(QStringLiteral("user"));
    for (const QString &user : users)
        addUser(broker, command, user);
    const QString word = command.value(QStringLiteral("mode"));
    const auto mode = BrokerServer::modeOf(word.isEmpty() ? QStringLiteral("normal") : word);
    if (!mode)
        command.fail(QStringLiteral("unknown mode: %1").arg(word));
    broker->setMode(*mode);
    broker->setDelay(command.number(QStringLiteral("delay"), 5000));
    broker->setEncrypted(!command.isSet(QStringLiteral("plain")));
}

} // namespace

int brokerCommand()
{
    LabCommand command(QStringLiteral("broker"),
                       QStringLiteral("Plays a SOLVA connection broker; prints each request."));
    addOptions(&command);
    command.process(0, 0);
    BrokerServer broker;
    setUp(&broker, command);
    return ServerCommand::run(&broker, command, BrokerServer::defaultPort);
}
