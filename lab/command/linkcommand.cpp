// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/output.h"
#include "lab-peers/linkproxy.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

void addOptions(LabCommand *command)
{
    const auto add = [command](const char *name, const char *description, const char *value) {
        command->addOption(QLatin1String(name), QLatin1String(description), QLatin1String(value));
    };
    add("address", "The link's address, which devices use for the server.", "A");
    add("to", "The server's own address, on the loopback interface if possible.", "B");
    add("drop", "The percentage of lost datagrams.", "PERCENT");
    add("duplicate", "The percentage of duplicated datagrams.", "PERCENT");
    add("reorder", "The percentage of datagrams that later ones overtake.", "PERCENT");
    add("hold", "The extra delay of those, 20 by default.", "MS");
    add("delay", "The delay of every datagram.", "MS");
    add("seed", "Selects the affected datagrams.", "N");
    add("seconds", "Ends after N seconds.", "N");
}

double percent(const LabCommand &command, const char *option)
{
    const QString text = command.value(QLatin1String(option));
    bool isNumber = true;
    const double part = text.isEmpty() ? 0 : text.toDouble(&isNumber);
    if (!isNumber || !(part >= 0 && part <= 100))
        command.fail(QStringLiteral("--%1 needs 0 to 100, not %2").arg(QLatin1String(option), text));
    return part;
}

QHostAddress address(const LabCommand &command, const char *option)
{
    const QHostAddress address(command.value(QLatin1String(option)));
    if (address.protocol() != QAbstractSocket::IPv4Protocol)
        command.fail(QStringLiteral("--%1 needs an IPv4 address").arg(QLatin1String(option)));
    return address;
}

LinkFaults faults(const LabCommand &command)
{
    LinkFaults faults;
    faults.dropped = percent(command, "drop");
    faults.duplicated = percent(command, "duplicate");
    faults.heldBack = percent(command, "reorder");
    faults.holdMs = command.number(QStringLiteral("hold"), faults.holdMs);
    faults.delayMs = command.number(QStringLiteral("delay"), 0);
    faults.seed = static_cast<quint32>(command.number(QStringLiteral("seed"), 1));
    return faults;
}

} // namespace

int linkCommand()
{
    LabCommand command(QStringLiteral("link"),
                       QStringLiteral("Plays a bad link in front of a Corvid server, on UDP port 1283."));
    addOptions(&command);
    command.process(0, 0);
    LinkProxy link(address(command, "to"), faults(command));
    if (!link.listen(address(command, "address")))
        command.fail(link.errorString());
    if (command.isSet(QStringLiteral("seconds")))
        QTimer::singleShot(command.number(QStringLiteral("seconds"), 0) * 1000, qApp,
                           &QCoreApplication::quit);
    printLine(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
