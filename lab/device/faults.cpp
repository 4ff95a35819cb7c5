// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/faults.h"

#include "lab-device/output.h"

#include <QFile>
#include <QThread>

#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

/// Callers give up on a hanging tool much earlier. The limit ends a forgotten one.
constexpr unsigned long hangSeconds = 600;
constexpr int floodMegabytes = 64;

std::optional<int> hang(int)
{
    QThread::sleep(hangSeconds);
    return 1;
}

std::optional<int> hangStubbornly(int)
{
    std::signal(SIGTERM, SIG_IGN);
    return hang(0);
}

std::optional<int> crash(int)
{
    const rlimit noCoreFile{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCoreFile);
    std::abort();
}

std::optional<int> printGarbage(int)
{
    static constexpr char garbage[]
        = "\xff\xfe\0{\"values\": {\"status\": [true, \"ip address\": 7}\n}]tru\x80";
    std::fwrite(garbage, 1, sizeof garbage - 1, stdout);
    return 0;
}

std::optional<int> flood(int)
{
    const QByteArray kilobyte = QByteArray(1023, '.') + '\n';
    for (int i = 0; i < floodMegabytes * 1024; ++i)
        if (std::fwrite(kilobyte.constData(), 1, 1024, stdout) != 1024)
            return 1;
    return 0;
}

std::optional<int> exitWith(int status)
{
    return status;
}

std::optional<int> wait(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(qBound(0, milliseconds, 600000)));
    return std::nullopt;
}

std::optional<int> trickle(int milliseconds)
{
    trickleOutput(milliseconds);
    return std::nullopt;
}

struct Fault
{
    const char *kind;
    std::optional<int> (*apply)(int number);
};

constexpr Fault faults[] = {
    {"hang", hang},   {"stubborn", hangStubbornly}, {"crash", crash}, {"garbage", printGarbage},
    {"flood", flood}, {"exit", exitWith},           {"slow", wait},   {"trickle", trickle},
};

} // namespace

QStringList faultKinds()
{
    QStringList kinds;
    for (const Fault &fault : faults)
        kinds << QLatin1String(fault.kind);
    return kinds;
}

std::optional<int> applyFault(const ToolCall &call)
{
    QFile file(call.fileFor(QStringLiteral("faults")));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QStringList words = QString::fromUtf8(file.readAll()).simplified().split(QLatin1Char(' '));
    for (const Fault &fault : faults)
        if (words.constFirst() == QLatin1String(fault.kind))
            return fault.apply(words.value(1).toInt());
    printError(QStringLiteral("%1: unknown fault in %2").arg(call.name, file.fileName()));
    return std::nullopt;
}
