// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/output.h"
#include "lab-peers/corvidserver.h"

#include <QCoreApplication>
#include <QTimer>

namespace {
QVector<QHostAddress> addresses(const LabCommand &command)
{
    QVector<QHostAddress> result;
    const QString list = command.value(QStringLiteral("address"));
    const QStringList words = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        result.append(QHostAddress(word));
        if (result.constLast().protocol() != QAbstractSocket::IPv4Protocol)
            command.fail(QStringLiteral("%1 is no IPv4 address").arg(word));
    }
    if (result.isEmpty())
        command.fail(QStringLiteral("--address is needed"));
    return result;
}

void addServers(CorvidServer *server, const LabCommand &command)
{
    const QVector<QHostAddress> own = addresses(command);
    const QStringList names = command.values(QStringLiteral("name"));
    for (int i = 0; i < own.size(); ++i) {
        const QString fallback = QStringLiteral("Server %1").arg(i + 1);
        server->addServer(names.value(i, fallback), own.at(i));
    }
    const int entries = command.number(QStringLiteral("entries"), 1);
    for (int i = 2; i <= qMin(entries, 900); ++i)
        server->addServer(QStringLiteral("Server %1").arg(own.size() + i - 1), own.constFirst());
}

// Ends the program after so many discoveries, once the first server has answered the last of them.
void stopAfter(const CorvidServer &server, int count, const QHostAddress &first)
{
    int left = count;
    QObject::connect(&server, &CorvidServer::replySent, &server,
                     [left, first](const QHostAddress &from) mutable {
                         if (from == first && --left == 0)
                             QTimer::singleShot(0, qApp, &QCoreApplication::quit);
                     });
}
} // namespace

int corvidServerCommand()
{
    LabCommand command(QStringLiteral("corvid-server"),
                       QStringLiteral("Answers devices that look for Corvid servers, on UDP port 1283."));
    command.addOption(QStringLiteral("address"),
                      QStringLiteral("The servers' addresses; each is one server."),
                      QStringLiteral("A[,B...]"));
    command.addOption(QStringLiteral("name"),
                      QStringLiteral("A server's name; once per address, in their order."),
                      QStringLiteral("NAME"));
    command.addOption(QStringLiteral("entries"), QStringLiteral("The first server's reply names N servers."),
                      QStringLiteral("N"));
    command.addOption(QStringLiteral("delay"), QStringLiteral("Waits before each reply."),
                      QStringLiteral("MS"));
    command.addOption(QStringLiteral("count"), QStringLiteral("Ends after N discoveries."),
                      QStringLiteral("N"));
    command.addOption(QStringLiteral("seconds"), QStringLiteral("Ends after N seconds."),
                      QStringLiteral("N"));
    command.process(0, 0);

    CorvidServer server;
    addServers(&server, command);
    server.setReplyDelay(command.number(QStringLiteral("delay"), 0));
    if (!server.listen())
        command.fail(server.errorString());
    QObject::connect(
        &server, &CorvidServer::requestReceived, &server,
        [](const QByteArray &datagram, const QHostAddress &sender, quint16 port) {
            printLine(
                QStringLiteral("%1 bytes from %2:%3").arg(datagram.size()).arg(sender.toString()).arg(port));
        });
    if (command.isSet(QStringLiteral("count")))
        stopAfter(server, command.number(QStringLiteral("count"), 1), addresses(command).constFirst());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
