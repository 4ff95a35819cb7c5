// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launchermessage/launcherprocess.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace LauncherProcess {

namespace {

constexpr char userName[] = "kt964";
constexpr char program[] = "/usr/bin/kt964";
constexpr int statusLimit = 64 * 1024;

/// The fields behind "NAME:" in /proc/PID/status.
QList<QByteArray> fields(const QByteArray &status, const QByteArray &name)
{
    for (const QByteArray &line : status.split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ');
    }
    return {};
}

/// Whether the process runs the launcher, be it one that an upgrade has replaced since.
bool runsLauncher(const QString &folder)
{
    QByteArray target(256, '\0');
    const ssize_t size = readlink(QFile::encodeName(folder + QLatin1String("/exe")).constData(),
                                  target.data(), static_cast<std::size_t>(target.size()));
    if (size <= 0)
        return false;
    target.truncate(static_cast<int>(size));
    return target == program || target == QByteArray(program) + " (deleted)";
}

} // namespace

bool isReady(const QByteArray &status, uid_t user)
{
    bool isNumber = false;
    const qulonglong caught = fields(status, "SigCgt").value(0).toULongLong(&isNumber, 16);
    return isNumber && (caught >> (SIGUSR1 - 1) & 1) != 0
        && fields(status, "Uid").value(0) == QByteArray::number(user);
}

QVector<int> all()
{
    QVector<int> found;
    const passwd *user = getpwnam(userName);
    if (!user)
        return found;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString &name : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const int pid = name.toInt(&isNumber);
        const QString folder = processes.filePath(name);
        if (!isNumber || !runsLauncher(folder))
            continue;
        QFile status(folder + QLatin1String("/status"));
        if (status.open(QIODevice::ReadOnly) && isReady(status.read(statusLimit), user->pw_uid))
            found += pid;
    }
    return found;
}

} // namespace LauncherProcess
