// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "labdevice.h"

#include <QFile>

namespace {
constexpr int programTimeout = 20000;

QString labProgram()
{
    return qEnvironmentVariable("KT_BIN_DIR") + QStringLiteral("/kt-lab");
}

Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    Outcome outcome;
    if (!process.waitForFinished(programTimeout))
        return outcome;
    outcome.crashed = process.exitStatus() == QProcess::CrashExit;
    outcome.status = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.error = process.readAllStandardError();
    return outcome;
}
} // namespace

void LabDevice::makeAgain() const
{
    run(labProgram(), {QStringLiteral("make-root"), m_folder.path()});
}

QString LabDevice::path(const char *devicePath) const
{
    return m_folder.path() + QLatin1Char('/') + QLatin1String(devicePath);
}

Outcome LabDevice::call(const char *commandLine, const QStringList &furtherArguments) const
{
    QStringList words = QProcess::splitCommand(QString::fromUtf8(commandLine)) + furtherArguments;
    words.replaceInStrings(QStringLiteral("''"), QString());
    const QString &tool = words.constFirst();
    const QString folder = path(tool.contains(QLatin1Char('/')) ? "" : "usr/bin/");
    return run(folder + tool, words.mid(1));
}

Outcome LabDevice::lab(const char *commandLine) const
{
    QStringList words = QProcess::splitCommand(QString::fromUtf8(commandLine));
    return run(labProgram(), words << QStringLiteral("--root") << m_folder.path());
}

bool LabDevice::networkConfig(const char *subCommand) const
{
    return call("kt-network-config",
                {QLatin1String(subCommand), QStringLiteral("A"), QLatin1String(documentPath)})
               .status
        == 0;
}

QByteArray LabDevice::networkAnswer(const char *subCommand) const
{
    return call("kt-network-config", {QLatin1String(subCommand), QStringLiteral("A")}).output.trimmed();
}

void LabDevice::write(const char *devicePath, const QByteArray &content) const
{
    QFile file(path(devicePath));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
}

QByteArray LabDevice::read(const char *devicePath) const
{
    QFile file(path(devicePath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList LabDevice::calls() const
{
    return QString::fromUtf8(read("lab/calls.log")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
