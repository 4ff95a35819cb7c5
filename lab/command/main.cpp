// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "lab-device/output.h"
#include "lab-device/toolbox.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

struct Command
{
    const char *name;
    const char *summary;
    int (*run)();
};

constexpr Command commands[] = {
    {"make-root", "create a device root: the folder that stands for the device's file system",
     makeRootCommand},
    {"cable", "plug or unplug the device's network cable", cableCommand},
    {"wifi", "show the wireless networks, or associate the device with one", wifiCommand},
    {"usb", "show the USB devices, plug one in or unplug one", usbCommand},
    {"fault", "set a fault for a device tool", faultCommand},
    {"document", "change a value of the configuration document", documentCommand},
    {"calls", "show the calls of device tools", callsCommand},
    {"message", "send the program a message, as the device's scripts do", messageCommand},
    {"corvid-server", "play one or several Corvid servers", corvidServerCommand},
    {"broker", "play a SOLVA connection broker", brokerCommand},
    {"qmd-server", "play a QMD management server", qmdServerCommand},
    {"qmd-queue", "queue a message for a device at that server", qmdQueueCommand},
    {"firmware-server", "play a web server for firmware", firmwareServerCommand},
    {"link", "play a bad link to a Corvid server: drop, delay, duplicate, reorder", linkCommand},
};

int help(int status)
{
    QStringList lines{QStringLiteral("Usage: kt-lab COMMAND [--help] ..."),
                      QStringLiteral("The simulated device and the peers of its network.\n")};
    for (const Command &command : commands)
        lines << QStringLiteral("  %1 %2")
                     .arg(QLatin1String(command.name), -15)
                     .arg(QLatin1String(command.summary));
    lines << QStringLiteral("\nUnder the name of a device tool, kt-lab plays that tool (docs/lab.md).");
    status == 0 ? printLine(lines.join(QLatin1Char('\n'))) : printError(lines.join(QLatin1Char('\n')));
    return status;
}

int runCommand(const QString &name)
{
    for (const Command &command : commands)
        if (name == QLatin1String(command.name))
            return command.run();
    const bool asked = name == QLatin1String("--help") || name == QLatin1String("-h");
    return help(asked ? 0 : 2);
}

int playTool(const QString &invokedAs, const QStringList &arguments)
{
    const QString name = QFileInfo(invokedAs).fileName();
    const DeviceRoot root = DeviceRoot::ofTool(invokedAs);
    if (root.isValid())
        return runTool({root, name, arguments});
    printError(QStringLiteral("%1: no device root for this stand-in").arg(name));
    return 127;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << QString::fromUtf8(argv[i]);
    if (QFileInfo(words.constFirst()).fileName() == QLatin1String("kt-lab"))
        return runCommand(words.value(1));
    return playTool(words.constFirst(), words.mid(1));
}
