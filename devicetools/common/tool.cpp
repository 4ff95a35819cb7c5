// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"

#include <QCoreApplication>
#include <QFile>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace Tool {

namespace {

/// What the signal handler may touch: bytes that were laid out before the signal can come.
struct LastWords
{
    std::array<char, 256> output{};
    std::size_t outputSize = 0;
    std::array<char, 256> error{};
    std::size_t errorSize = 0;
};

LastWords lastWords;
QString calledAs;

template <std::size_t Capacity>
void layOut(const QByteArray &text, std::array<char, Capacity> &bytes, std::size_t &size)
{
    size = std::min(static_cast<std::size_t>(text.size()), Capacity);
    std::memcpy(bytes.data(), text.constData(), size);
}

void giveUp(int)
{
    // There is nobody left to tell when these fail.
    if (write(STDOUT_FILENO, lastWords.output.data(), lastWords.outputSize) < 0
        || write(STDERR_FILENO, lastWords.error.data(), lastWords.errorSize) < 0)
        _exit(Failed);
    _exit(Failed);
}

void say(const QString &text)
{
    QString line = name() + QLatin1String(": ") + text;
    for (QChar &character : line) {
        if (character < QLatin1Char(' ') || character.unicode() == 0x7f)
            character = QLatin1Char(' ');
    }
    const QByteArray bytes = line.simplified().toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

const Command *find(const std::vector<Command> &commands)
{
    for (const Command &command : commands) {
        if (commands.size() == 1 || name() == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

void explain(const Command &command)
{
    print(QStringLiteral("Usage: %1 %2").arg(name(), QLatin1String(command.usage)).trimmed());
    std::fputs(command.help, stdout);
}

} // namespace

int main(int argc, char **argv, const std::vector<Command> &commands)
{
    const QCoreApplication application(argc, argv);
    calledAs = QString::fromLocal8Bit(argc > 0 ? argv[0] : "").section(QLatin1Char('/'), -1);
    const Command *command = find(commands);
    if (!command)
        return reject(QStringLiteral("there is no tool of this name in the program"));
    const QStringList arguments = application.arguments().mid(1);
    if (arguments == QStringList{QStringLiteral("--help")}) {
        explain(*command);
        return Done;
    }
    limit(command->limitSeconds);
    const int status = command->run(arguments);
    if (status == WrongUsage)
        std::fprintf(stderr, "Usage: %s %s\n", qUtf8Printable(name()), command->usage);
    return status;
}

QString name()
{
    return calledAs;
}

int fail(const QString &reason)
{
    say(reason);
    return Failed;
}

int reject(const QString &reason)
{
    say(reason);
    return WrongUsage;
}

void print(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void limit(int seconds, const QByteArray &words)
{
    alarm(0);
    layOut(words, lastWords.output, lastWords.outputSize);
    layOut(name().toUtf8() + ": gave up after " + QByteArray::number(seconds) + " s\n", lastWords.error,
           lastWords.errorSize);
    struct sigaction action = {};
    action.sa_handler = giveUp;
    sigaction(SIGALRM, &action, nullptr);
    // A parent may have left the signal blocked.
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);
    sigprocmask(SIG_UNBLOCK, &alarms, nullptr);
    alarm(static_cast<unsigned>(std::max(seconds, 1)));
}

} // namespace Tool
