// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/servercommand.h"

#include "command/labcommand.h"
#include "lab-device/output.h"
#include "lab-peers/httppeer.h"

#include <QCoreApplication>
#include <QTimer>

void ServerCommand::addOptions(LabCommand *command, quint16 defaultPort)
{
    command->addOption(QStringLiteral("address"), QStringLiteral("The server's address."),
                       QStringLiteral("A"));
    command->addOption(QStringLiteral("port"), QStringLiteral("Its port, %1 by default.").arg(defaultPort),
                       QStringLiteral("N"));
    command->addOption(QStringLiteral("seconds"), QStringLiteral("Ends after N seconds."),
                       QStringLiteral("N"));
}

int ServerCommand::run(HttpPeer *server, const LabCommand &command, quint16 defaultPort)
{
    const QHostAddress address(command.value(QStringLiteral("address")));
    if (address.isNull())
        command.fail(QStringLiteral("--address is required"));
    const int port = command.number(QStringLiteral("port"), defaultPort);
    if (port > 65535)
        command.fail(QStringLiteral("invalid port: %1").arg(port));
    QObject::connect(server, &HttpPeer::requestReceived, server,
                     [](const QString &line) { printLine(line); });
    if (!server->start(address, static_cast<quint16>(port)))
        command.fail(server->fault());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
