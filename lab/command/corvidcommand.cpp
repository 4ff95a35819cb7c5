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
            command.fail(QStringLiteral("not an IPv4 address: %1").arg(word));
    }
    if (result.isEmpty())
        command.fail(QStringLiteral("--address is required"));
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

/// Returns the value of an option that is given once for all servers, or once for each.
QString valueFor(const LabCommand &command, const char *option, int server)
{
    const QStringList given = command.values(QLatin1String(option));
    return given.size() == 1 ? given.constFirst() : given.value(server);
}

void addFiles(CorvidServer *server, const LabCommand &command)
{
    CorvidFaults faults;
    faults.loss = command.number(QStringLiteral("loss"), 0);
    faults.duplicates = command.number(QStringLiteral("duplicates"), 0);
    faults.reordering = command.number(QStringLiteral("reordering"), 0);
    faults.silentFrom = command.number(QStringLiteral("silent-from"), -1);
    faults.totalChangesFrom = command.number(QStringLiteral("total-changes-from"), -1);
    faults.oneAtATime = command.isSet(QStringLiteral("one-at-a-time"));
    faults.seed = static_cast<quint32>(command.number(QStringLiteral("seed"), 1));
    const QVector<QHostAddress> own = addresses(command);
    for (int i = 0; i < own.size(); ++i) {
        CorvidFiles &files = server->files(own.at(i));
        files.setFolder(valueFor(command, "files", i));
        const QString firmware = valueFor(command, "firmware", i);
        const int equals = firmware.indexOf(QLatin1Char('='));
        if (equals > 0)
            files.addFirmware(firmware.left(equals), firmware.mid(equals + 1));
        server->setFaults(own.at(i), faults);
    }
}

void addFileOptions(LabCommand *command)
{
    const auto option = [command](const char *name, const char *text, const char *value) {
        command->addOption(QLatin1String(name), QLatin1String(text), QLatin1String(value));
    };
    option("files", "The folder with the files; once, or once per address.", "FOLDER");
    option("firmware", "The firmware in the index \"kt-update.txt\"; once, or once per address.",
           "VERSION=FILE");
    option("loss", "The percentage of lost blocks.", "PERCENT");
    option("duplicates", "The percentage of blocks sent twice.", "PERCENT");
    option("reordering", "The percentage of blocks sent after the next one.", "PERCENT");
    option("seed", "Selects the affected blocks.", "N");
    option("silent-from", "Sends no reply for blocks from this position on.", "BYTES");
    option("total-changes-from", "Reports another file size from this position on.", "BYTES");
    command->addOption(QStringLiteral("one-at-a-time"),
                       QStringLiteral("Replies only to the newest of the block requests that wait."));
}

/// Prints only the first block of a transfer.
void printRequest(const QByteArray &datagram, const QHostAddress &sender, quint16 port)
{
    const std::optional<CorvidRequest> request = parseCorvidRequest(datagram);
    const bool block = request && request->kind == CorvidRequest::Kind::FileBlock;
    const QString from = QStringLiteral("%1:%2").arg(sender.toString()).arg(port);
    if (!block)
        printLine(QStringLiteral("%1 bytes from %2").arg(datagram.size()).arg(from));
    else if (request->position == 0)
        printLine(QStringLiteral("file %1 for %2").arg(request->fileName, from));
}

/// Ends the program after this many discoveries, after the first server's last reply.
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
    LabCommand command(
        QStringLiteral("corvid-server"),
        QStringLiteral("Plays Corvid servers on UDP port 1283: replies to discoveries and sends "
                       "files."));
    command.addOption(QStringLiteral("address"), QStringLiteral("The servers' addresses."),
                      QStringLiteral("A[,B...]"));
    command.addOption(QStringLiteral("name"),
                      QStringLiteral("A server's name; once per address, in their order."),
                      QStringLiteral("NAME"));
    command.addOption(QStringLiteral("entries"),
                      QStringLiteral("Puts N servers into the first server's reply."), QStringLiteral("N"));
    command.addOption(QStringLiteral("delay"), QStringLiteral("Waits before each reply."),
                      QStringLiteral("MS"));
    command.addOption(QStringLiteral("count"), QStringLiteral("Ends after N discoveries."),
                      QStringLiteral("N"));
    command.addOption(QStringLiteral("seconds"), QStringLiteral("Ends after N seconds."),
                      QStringLiteral("N"));
    addFileOptions(&command);
    command.process(0, 0);

    CorvidServer server;
    addServers(&server, command);
    addFiles(&server, command);
    server.setReplyDelay(command.number(QStringLiteral("delay"), 0));
    if (!server.listen())
        command.fail(server.errorString());
    QObject::connect(&server, &CorvidServer::requestReceived, &server, printRequest);
    if (command.isSet(QStringLiteral("count")))
        stopAfter(server, command.number(QStringLiteral("count"), 1), addresses(command).constFirst());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
