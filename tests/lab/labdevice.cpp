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

LabDevice::LabDevice()
{
    lab({QStringLiteral("make-root"), m_folder.path()});
}

Outcome LabDevice::call(const QString &tool, const QStringList &arguments) const
{
    return run(path(tool.contains(QLatin1Char('/')) ? tool : QStringLiteral("usr/bin/") + tool), arguments);
}

Outcome LabDevice::lab(QStringList arguments) const
{
    if (arguments.constFirst() != QLatin1String("make-root"))
        arguments << QStringLiteral("--root") << m_folder.path();
    return run(labProgram(), arguments);
}

Outcome LabDevice::networkConfig(const QString &subCommand, const QString &document) const
{
    QStringList arguments{subCommand, QStringLiteral("A")};
    if (!document.isEmpty())
        arguments << document;
    return call(QStringLiteral("kt-network-config"), arguments);
}

QString LabDevice::state(const QString &name) const
{
    return QString::fromUtf8(read(QStringLiteral("lab/state/") + name)).trimmed();
}

void LabDevice::write(const QString &devicePath, const QByteArray &content) const
{
    QFile file(path(devicePath));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
}

QByteArray LabDevice::read(const QString &devicePath) const
{
    QFile file(path(devicePath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList LabDevice::calls() const
{
    return QString::fromUtf8(read(QStringLiteral("lab/calls.log")))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
