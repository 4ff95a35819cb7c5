// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"
#include "lab-device/toolbox.h"
#include "lab-device/tools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>

namespace {

/// Returns the path of the stand-in with this device path or name; empty when there is none.
QString standInPath(const DeviceRoot &root, const QString &word)
{
    QStringList candidates;
    if (word.contains(QLatin1Char('/')))
        candidates << root.file(word);
    else
        for (const QString &folder : toolFolders())
            candidates << root.file(folder + QLatin1Char('/') + word);
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    for (const QString &candidate : candidates)
        if (QFileInfo(candidate).canonicalFilePath() == self)
            return candidate;
    return {};
}

QByteArray readProcFile(const QString &process, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(process, QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool belongsTo(const DeviceRoot &root, const QString &process)
{
    const QByteArray name = "KT_DEVICE_ROOT=";
    const QList<QByteArray> environment = readProcFile(process, "environ").split('\0');
    return std::any_of(environment.begin(), environment.end(), [&](const QByteArray &variable) {
        return variable.startsWith(name)
            && DeviceRoot(QFile::decodeName(variable.mid(name.size()))).path() == root.path();
    });
}

int signalNumber(const QString &option)
{
    if (option == QLatin1String("-SIGUSR1") || option == QLatin1String("-USR1"))
        return SIGUSR1;
    if (option == QLatin1String("-SIGKILL") || option == QLatin1String("-KILL")
        || option == QLatin1String("-9"))
        return SIGKILL;
    return option.startsWith(QLatin1Char('-')) ? 0 : SIGTERM;
}

} // namespace

int runSudo(const ToolCall &call)
{
    const QString path = standInPath(call.root, call.argument(0));
    if (path.isEmpty()) {
        printError(QStringLiteral("sudo: %1: command not found").arg(call.argument(0)));
        return 1;
    }
    return runTool({call.root, QFileInfo(path).fileName(), call.arguments.mid(1)});
}

/// Signals the processes of that name on this device: those with its device root in their environment.
int runPkill(const ToolCall &call)
{
    const int number = signalNumber(call.argument(0));
    const QByteArray name = call.arguments.isEmpty() ? QByteArray() : call.arguments.constLast().toUtf8();
    if (number == 0 || name.isEmpty() || name.startsWith('-')) {
        printError(QStringLiteral("usage: pkill [-SIGUSR1|-SIGKILL] NAME"));
        return 2;
    }
    bool found = false;
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &process : processes) {
        const int id = process.toInt();
        // The kernel cuts process names to 15 bytes.
        if (id > 1 && readProcFile(process, "comm").trimmed() == name.left(15)
            && belongsTo(call.root, process))
            found = ::kill(id, number) == 0 || found;
    }
    return found ? 0 : 1;
}
