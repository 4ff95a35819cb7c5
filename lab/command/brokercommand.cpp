// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/output.h"
#include "lab-peers/brokerserver.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

// "NAME=ADDRESS"; a desktop without an address is the broker's machine itself.
BrokerDesktop desktop(const QString &words, const QString &ownAddress)
{
    const int sign = words.lastIndexOf(QLatin1Char('='));
    return sign < 0 ? BrokerDesktop{words, ownAddress} : BrokerDesktop{words.left(sign), words.mid(sign + 1)};
}

void addUser(BrokerServer *broker, const LabCommand &command, const QString &words)
{
    const QStringList parts = words.split(QLatin1Char(':'));
    if (parts.size() < 3 || parts.constFirst().isEmpty())
        command.fail(QStringLiteral("--user wants NAME:PASSWORD:DESKTOP,..., not %1").arg(words));
    QVector<BrokerDesktop> desktops;
    const QStringList names = parts.mid(2).join(QLatin1Char(':')).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &name : names)
        desktops.append(desktop(name, command.value(QStringLiteral("address"))));
    broker->addUser(parts.at(0), parts.at(1), desktops);
}

void addOptions(LabCommand *command)
{
    command->addOption(QStringLiteral("address"), QStringLiteral("The broker's address."),
                       QStringLiteral("A"));
    command->addOption(QStringLiteral("port"), QStringLiteral("Its port, 8443 unless given."),
                       QStringLiteral("N"));
    command->addOption(
        QStringLiteral("user"),
        QStringLiteral("A user and his desktops; a desktop is NAME or NAME=ADDRESS. Once per user."),
        QStringLiteral("NAME:PASSWORD:DESKTOP,..."));
    command->addOption(QStringLiteral("mode"),
                       QStringLiteral("normal, slow, 500, cut, huge, empty or no-line-ends."),
                       QStringLiteral("MODE"));
    command->addOption(QStringLiteral("delay"), QStringLiteral("How long the mode slow waits."),
                       QStringLiteral("MS"));
    command->addOption(QStringLiteral("plain"), QStringLiteral("HTTP in the place of HTTPS."));
    command->addOption(QStringLiteral("seconds"), QStringLiteral("Ends after N seconds."),
                       QStringLiteral("N"));
}

void setUp(BrokerServer *broker, const LabCommand &command)
{
    const QStringList users = command.values(QStringLiteral("user"));
    for (const QString &user : users)
        addUser(broker, command, user);
    const QString word = command.value(QStringLiteral("mode"));
    BrokerServer::Mode mode = BrokerServer::Mode::Normal;
    if (!word.isEmpty() && !BrokerServer::modeOf(word, &mode))
        command.fail(QStringLiteral("there is no mode %1").arg(word));
    broker->setMode(mode);
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
    const QHostAddress address(command.value(QStringLiteral("address")));
    if (address.isNull())
        command.fail(QStringLiteral("--address is needed"));
    const int port = command.number(QStringLiteral("port"), BrokerServer::defaultPort);
    if (port > 65535)
        command.fail(QStringLiteral("there is no port %1").arg(port));

    BrokerServer broker;
    setUp(&broker, command);
    QObject::connect(&broker, &BrokerServer::requestReceived, &broker,
                     [](const QString &line) { printLine(line); });
    if (!broker.start(address, static_cast<quint16>(port)))
        command.fail(broker.fault());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
