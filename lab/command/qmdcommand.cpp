// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/output.h"
#include "lab-peers/qmdserver.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

namespace {

void addSpoolOption(LabCommand *command)
{
    command->addOption(QStringLiteral("spool"),
                       QStringLiteral("The server's folder; by default lab/qmd of KT_DEVICE_ROOT."),
                       QStringLiteral("DIR"));
}

QString spoolFolder(const LabCommand &command)
{
    if (command.isSet(QStringLiteral("spool")))
        return command.value(QStringLiteral("spool"));
    const QString root = qEnvironmentVariable("KT_DEVICE_ROOT");
    if (root.isEmpty())
        command.fail(QStringLiteral("--spool or KT_DEVICE_ROOT is required"));
    return root + QLatin1String("/lab/qmd");
}

void addServerOptions(LabCommand *command)
{
    addSpoolOption(command);
    command->addOption(QStringLiteral("address"), QStringLiteral("The server's address."),
                       QStringLiteral("A"));
    command->addOption(QStringLiteral("port"),
                       QStringLiteral("Its port, 8080 by default; 0 selects a free one."),
                       QStringLiteral("N"));
    command->addOption(QStringLiteral("plain"), QStringLiteral("Uses HTTP instead of HTTPS."));
    command->addOption(QStringLiteral("mode"),
                       QStringLiteral("normal, slow, silent, 500, cut, rubbish, huge or redirect."),
                       QStringLiteral("MODE"));
    command->addOption(QStringLiteral("delay"), QStringLiteral("The delay of the mode slow."),
                       QStringLiteral("MS"));
    command->addOption(QStringLiteral("location"), QStringLiteral("The target of the mode redirect."),
                       QStringLiteral("URL"));
    command->addOption(QStringLiteral("seconds"), QStringLiteral("Ends after N seconds."),
                       QStringLiteral("N"));
}

void setUp(QmdServer *server, const LabCommand &command)
{
    const QString word = command.value(QStringLiteral("mode"));
    if (!word.isEmpty() && !QmdServer::modeOf(word))
        command.fail(QStringLiteral("unknown mode: %1").arg(word));
    if (!word.isEmpty() && !server->spool().setMode(word))
        command.fail(QStringLiteral("cannot write to %1").arg(spoolFolder(command)));
    server->setDelay(command.number(QStringLiteral("delay"), 5000));
    server->setRedirect(QUrl(command.value(QStringLiteral("location"))));
    server->setEncrypted(!command.isSet(QStringLiteral("plain")));
}

QByteArray actionList(const QStringList &words)
{
    QJsonObject action{{QStringLiteral("action"), words.value(0)}};
    if (words.size() > 1)
        action.insert(QStringLiteral("params"), QJsonObject{{QStringLiteral("downloadUrl"), words.at(1)}});
    return QJsonDocument(QJsonArray{action}).toJson(QJsonDocument::Compact);
}

} // namespace

int qmdServerCommand()
{
    LabCommand command(QStringLiteral("qmd-server"),
                       QStringLiteral("Plays a QMD management server; prints each request."));
    addServerOptions(&command);
    command.process(0, 0);
    const QHostAddress address(command.value(QStringLiteral("address")));
    if (address.isNull())
        command.fail(QStringLiteral("--address is required"));
    const int port = command.number(QStringLiteral("port"), QmdServer::defaultPort);
    if (port > 65535)
        command.fail(QStringLiteral("invalid port: %1").arg(port));

    QmdServer server(spoolFolder(command));
    setUp(&server, command);
    QObject::connect(&server, &QmdServer::requestReceived, &server,
                     [](const QString &line) { printLine(line); });
    if (!server.start(address, static_cast<quint16>(port)))
        command.fail(server.fault());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("port %1").arg(server.serverPort()));
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}

int qmdQueueCommand()
{
    LabCommand command(QStringLiteral("qmd-queue"),
                       QStringLiteral("Queues a message for a device at a QMD management server."));
    addSpoolOption(&command);
    command.addArgument(QStringLiteral("SERIAL"),
                        QStringLiteral("The device's serial number, or - for a device without one."));
    command.addArgument(QStringLiteral("KIND"),
                        QStringLiteral("action NAME [URL], or one of actions, configuration, profile and body"
                                       " with a FILE."));
    command.addArgument(QStringLiteral("WHAT [URL]"), QString());
    command.process(3, 4);

    const QmdSpool spool(spoolFolder(command));
    const QString kind = command.argument(1);
    QByteArray text;
    if (kind == QLatin1String("action")) {
        text = actionList(command.arguments().mid(2));
    } else {
        QFile file(command.argument(2));
        if (!QmdSpool::kinds().contains(kind) || !file.open(QIODevice::ReadOnly))
            command.fail(QStringLiteral("cannot queue %1 as %2").arg(file.fileName(), kind));
        text = file.readAll();
    }
    const bool action = kind == QLatin1String("action");
    if (!spool.add(command.argument(0), action ? QStringLiteral("actions") : kind, text))
        command.fail(QStringLiteral("cannot write to %1").arg(spoolFolder(command)));
    return 0;
}
