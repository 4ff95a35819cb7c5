// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int pollIntervalMs = 200;

void printNew(QFile *log)
{
    if (!log->isOpen() && !log->open(QIODevice::ReadOnly))
        return;
    const QByteArray lines = log->readAll();
    std::fwrite(lines.constData(), 1, static_cast<size_t>(lines.size()), stdout);
    std::fflush(stdout);
}

} // namespace

int callsCommand()
{
    LabCommand command(QStringLiteral("calls"),
                       QStringLiteral("Prints the calls of device tools, oldest first."));
    command.addOption(QStringLiteral("f"), QStringLiteral("Prints each new call until interrupted."));
    command.addRootOption();
    command.process(0, 0);
    QFile log(command.root().labFile(QStringLiteral("calls.log")));
    printNew(&log);
    if (!command.isSet(QStringLiteral("f")))
        return 0;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&log] { printNew(&log); });
    poll.start(pollIntervalMs);
    return QCoreApplication::exec();
}
