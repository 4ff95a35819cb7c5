// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/commands.h"

#include "device/paths.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QProcess>
#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcCommands, "kt.device.commands")

namespace Commands {

QProcessEnvironment environment()
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    if (!Paths::root().isEmpty()) {
        const QString tools = Paths::onDevice(QStringLiteral("/usr/bin")) + QLatin1Char(':')
            + Paths::onDevice(QStringLiteral("/usr/sbin"));
        result.insert(QStringLiteral("PATH"),
                      tools + QLatin1Char(':') + result.value(QStringLiteral("PATH")));
    }
    return result;
}

void runShell(const QString &commandLine)
{
    qCDebug(lcCommands).noquote() << "run:" << commandLine;
    auto *shell = new QProcess;
    QObject::connect(shell, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), shell,
                     &QObject::deleteLater);
    shell->setProcessEnvironment(environment());
    shell->setProcessChannelMode(QProcess::ForwardedChannels);
    shell->setInputChannelMode(QProcess::ForwardedInputChannel);
    shell->start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), commandLine});
    if (!shell->waitForStarted(timeLimitMs)) {
        qCWarning(lcCommands) << "no shell could be started:" << shell->errorString();
        delete shell;
    } else if (!shell->waitForFinished(timeLimitMs) && shell->state() != QProcess::NotRunning) {
        qCWarning(lcCommands).noquote() << "still running after" << timeLimitMs << "ms:" << commandLine;
    }
}

QByteArray query(const QString &program, const QStringList &arguments, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    QByteArray output;
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // A tool that asks for something gets no answer; it must not wait for one.
    process.setStandardInputFile(QProcess::nullDevice());
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&] {
        output += process.readAllStandardOutput();
        if (output.size() > outputLimit)
            process.kill();
    });
    process.start(Paths::program(program), arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(limitMs)) {
        qCWarning(lcCommands).noquote() << "cannot start" << program << ':' << process.errorString();
        return QByteArray();
    }
    if (!process.waitForFinished(limitMs) && process.state() != QProcess::NotRunning) {
        qCWarning(lcCommands).noquote() << "no end after" << limitMs << "ms:" << program << arguments;
        process.kill();
        process.waitForFinished(1000);
    }
    output += process.readAllStandardOutput();
    qCDebug(lcCommands).noquote() << "query:" << program << arguments << "in"
                                  << QString::number(static_cast<double>(clock.nsecsElapsed()) / 1e6, 'f', 1)
                                  << "ms";
    return output.left(outputLimit);
}

QString quoted(const QString &value)
{
    static const QRegularExpression plainWord(
        QStringLiteral("\\A[A-Za-z0-9_./:@%+,=][A-Za-z0-9_./:@%+,=-]*\\z"));
    if (plainWord.match(value).hasMatch())
        return value;
    QString escaped = value;
    escaped.remove(QChar::Null).replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

QString line(const QString &program, const QString &arguments, bool asRoot)
{
    QString result = asRoot ? QStringLiteral("sudo ") : QString();
    // The device root is a path of the lab or of a test and may hold blanks; a device path never needs
    // quotes.
    result += quoted(Paths::onDevice(program));
    return arguments.isEmpty() ? result : result + QLatin1Char(' ') + arguments;
}

} // namespace Commands
