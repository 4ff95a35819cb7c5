// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/toolrun.h"

#include "device/paths.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <csignal>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcTools, "kt.device.tools")

ToolCall ToolCall::command(const QString &line, int limitMs)
{
    ToolCall call;
    call.commandLine = line;
    call.limitMs = limitMs;
    return call;
}

ToolCall ToolCall::query(const QString &program, const QStringList &arguments, int limitMs)
{
    ToolCall call;
    call.program = program;
    call.arguments = arguments;
    call.limitMs = limitMs;
    return call;
}

void ToolRun::Child::setupChildProcess()
{
    ::setpgid(0, 0);
}

ToolRun::ToolRun(const ToolCall &call)
    : QObject(QCoreApplication::instance())
    , m_call(call)
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ToolRun::readOutput);
    connect(&m_process, &QProcess::errorOccurred, this, &ToolRun::handleError);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &ToolRun::handleFinished);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] { giveUp(ToolResult::End::TimedOut); });
}

ToolRun::~ToolRun()
{
    // At the program's end the process ends with its object, which then must not be told of it.
    m_process.disconnect(this);
}

void ToolRun::start(const ToolCall &call, QObject *context, const ToolDone &done)
{
    auto *run = new ToolRun(call);
    connect(run, &ToolRun::ended, context, done);
    run->begin();
}

void ToolRun::start(const ToolCall &call)
{
    (new ToolRun(call))->begin();
}

void ToolRun::begin()
{
    m_clock.start();
    m_process.setProcessEnvironment(Commands::environment());
    // A tool that asks for something gets no reply; it must not wait for one.
    m_process.setStandardInputFile(QProcess::nullDevice());
    if (m_call.limitMs > 0)
        m_limit.start(m_call.limitMs);
    if (m_call.program.isEmpty()) {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), m_call.commandLine});
    } else {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(Paths::program(m_call.program), m_call.arguments, QIODevice::ReadOnly);
    }
}

void ToolRun::readOutput()
{
    m_output += m_process.readAllStandardOutput();
    if (m_output.size() > Commands::outputLimit)
        giveUp(ToolResult::End::TooLong);
}

void ToolRun::handleError(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart) // `finished` follows all others
        return;
    qCWarning(lcTools).noquote() << "cannot start" << description() << ':' << m_process.errorString();
    // From the event loop: a process that cannot be forked reports it while it is being started.
    QTimer::singleShot(0, this, [this] {
        finish(ToolResult());
        deleteLater();
    });
}

void ToolRun::handleFinished(int exitCode, QProcess::ExitStatus status)
{
    readOutput();
    ToolResult result;
    result.end = status == QProcess::NormalExit ? ToolResult::End::Exited : ToolResult::End::Crashed;
    result.exitCode = exitCode;
    result.output = m_output;
    finish(result);
    deleteLater();
}

/// The caller goes on at once. The process is released when the system has ended it: deleting it earlier
/// would wait for that.
void ToolRun::giveUp(ToolResult::End end)
{
    if (m_finished)
        return;
    qCWarning(lcTools).noquote() << (end == ToolResult::End::TimedOut ? "no end in time:"
                                                                      : "prints too much:")
                                 << description();
    if (const qint64 pid = m_process.processId(); pid > 0)
        ::kill(static_cast<pid_t>(-pid), SIGKILL);
    m_process.closeReadChannel(QProcess::StandardOutput);
    ToolResult result;
    result.end = end;
    finish(result);
}

void ToolRun::finish(const ToolResult &result)
{
    if (m_finished)
        return;
    m_finished = true;
    m_limit.stop();
    m_output.clear();
    qCDebug(lcTools).noquote() << (m_call.program.isEmpty() ? "run:" : "query:") << description() << "in"
                               << m_clock.elapsed() << "ms";
    emit ended(result);
}

QString ToolRun::description() const
{
    return m_call.program.isEmpty()
        ? m_call.commandLine
        : m_call.program + QLatin1Char(' ') + m_call.arguments.join(QLatin1Char(' '));
}
