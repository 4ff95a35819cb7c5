// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/faults.h"
#include "lab-device/output.h"
#include "lab-device/usbports.h"
#include "lab-device/wifinetworks.h"

#include <QFile>

#include <csignal>

namespace {

void writeFile(const LabCommand &command, const QString &path, const QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text.toUtf8()) < 0)
        command.fail(QStringLiteral("cannot write %1").arg(path));
}

int listWifi(const WifiNetworks &wifi)
{
    const QString current = wifi.currentSsid();
    const QJsonArray networks = wifi.networks();
    for (const QJsonValue &value : networks) {
        const QJsonObject network = value.toObject();
        const QString ssid = network.value(QLatin1String("ssid")).toString();
        const bool hidden = network.value(QLatin1String("hidden")).toBool();
        printLine(QStringLiteral("%1 %2 %3% %4%5")
                      .arg(ssid == current ? QLatin1Char('*') : QLatin1Char(' '))
                      .arg(ssid, -20)
                      .arg(network.value(QLatin1String("signal strength")).toInt(), 3)
                      .arg(network.value(QLatin1String("authentication")).toString(),
                           hidden ? QStringLiteral(" (hidden)") : QString()));
    }
    return 0;
}

qint64 programId(const LabCommand &command, const DeviceRoot &root)
{
    QString text = command.value(QStringLiteral("pid"));
    QFile file(root.labFile(QStringLiteral("kt964.pid")));
    if (text.isEmpty() && file.open(QIODevice::ReadOnly))
        text = QString::fromLatin1(file.readAll()).trimmed();
    const int id = text.toInt();
    if (id <= 1)
        command.fail(
            QStringLiteral("no process to signal: use --pid, or write its id to %1").arg(file.fileName()));
    return id;
}

} // namespace

int cableCommand()
{
    LabCommand command(QStringLiteral("cable"),
                       QStringLiteral("Plugs or unplugs the device's network cable."));
    command.addArgument(QStringLiteral("plug|unplug"), QStringLiteral("The action."));
    command.addRootOption();
    command.process(1, 1);
    const QString action = command.argument(0);
    if (action != QLatin1String("plug") && action != QLatin1String("unplug"))
        command.fail(QStringLiteral("unknown action: %1, need plug or unplug").arg(action));
    return command.root().setState(QStringLiteral("cable"), action + QStringLiteral("ged")) ? 0 : 1;
}

int wifiCommand()
{
    LabCommand command(QStringLiteral("wifi"),
                       QStringLiteral("Shows the wireless networks, or changes the device's association."));
    command.addArgument(QStringLiteral("list|associate|leave"), QStringLiteral("The action."));
    command.addArgument(QStringLiteral("[SSID]"), QStringLiteral("The network to associate with."));
    command.addOption(QStringLiteral("no-address"),
                      QStringLiteral("Associates, but gives the device no address."));
    command.addRootOption();
    command.process(1, 2);
    const WifiNetworks wifi(command.root());
    const QString action = command.argument(0);
    if (action == QLatin1String("list"))
        return listWifi(wifi);
    if (action == QLatin1String("leave"))
        wifi.leave();
    else if (action != QLatin1String("associate"))
        command.fail(QStringLiteral("unknown action: %1, need list, associate or leave").arg(action));
    else if (!wifi.associate(command.argument(1), !command.isSet(QStringLiteral("no-address"))))
        command.fail(QStringLiteral("no network named '%1'").arg(command.argument(1)));
    return 0;
}

int usbCommand()
{
    LabCommand command(QStringLiteral("usb"),
                       QStringLiteral("Shows the USB devices, plugs one in or unplugs one."));
    command.addArgument(QStringLiteral("list|plug|unplug"), QStringLiteral("The action."));
    command.addArgument(QStringLiteral("[VID:PID]"), QStringLiteral("The device, such as f0a1:0102."));
    command.addRootOption();
    command.process(1, 2);
    const UsbPorts ports(command.root());
    const QString action = command.argument(0);
    const QString identifier = command.argument(1);
    if (action == QLatin1String("list"))
        printLine(ports.devices().join(QLatin1Char('\n')));
    else if (action != QLatin1String("plug") && action != QLatin1String("unplug"))
        command.fail(QStringLiteral("unknown action: %1, need list, plug or unplug").arg(action));
    else if (action == QLatin1String("plug") ? !ports.plug(identifier) : !ports.unplug(identifier))
        command.fail(QStringLiteral("cannot %1 '%2'").arg(action, identifier));
    return 0;
}

int faultCommand()
{
    const QString kinds = faultKinds().join(QStringLiteral("|"));
    LabCommand command(QStringLiteral("fault"),
                       QStringLiteral("Sets a fault for the next calls of a device tool."));
    command.addArgument(QStringLiteral("NAME"),
                        QStringLiteral("The tool, or TOOL.ARGUMENT for its calls with that first argument."));
    command.addArgument(kinds + QStringLiteral("|none"), QStringLiteral("The fault; none removes it."));
    command.addArgument(QStringLiteral("[NUMBER]"),
                        QStringLiteral("Exit status of exit, milliseconds of slow."));
    command.addRootOption();
    command.process(2, 3);
    const QString path = command.root().labFile(QStringLiteral("faults/") + command.argument(0));
    if (command.argument(1) == QLatin1String("none"))
        return !QFile::exists(path) || QFile::remove(path) ? 0 : 1;
    if (!faultKinds().contains(command.argument(1)))
        command.fail(QStringLiteral("unknown fault: %2, need %1 or none").arg(kinds, command.argument(1)));
    writeFile(command, path, command.arguments().mid(1).join(QLatin1Char(' ')) + QLatin1Char('\n'));
    return 0;
}

int messageCommand()
{
    LabCommand command(QStringLiteral("message"),
                       QStringLiteral("Writes tmp/msg.json and sends SIGUSR1 to the program."));
    command.addArgument(QStringLiteral("JSON"), QStringLiteral("The message; written unchanged."));
    command.addOption(QStringLiteral("pid"),
                      QStringLiteral("The program's process id; by default that in lab/kt964.pid."),
                      QStringLiteral("ID"));
    command.addRootOption();
    command.process(1, 1);
    const DeviceRoot root = command.root();
    writeFile(command, root.file(QStringLiteral("/tmp/msg.json")), command.argument(0) + QLatin1Char('\n'));
    const qint64 id = programId(command, root);
    if (::kill(static_cast<pid_t>(id), SIGUSR1) != 0)
        command.fail(QStringLiteral("no process %1").arg(id));
    return 0;
}
