// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/freerdpprocess.h"

#include <QLoggingCategory>

#include <csignal>
#include <sys/prctl.h>

Q_LOGGING_CATEGORY(lcFreeRdp, "kt.session.freerdp")

// Runs between fork and exec. A launcher that kills us must not be left behind a full-screen orphan.
void FreeRdpProcess::Child::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

FreeRdpProcess::FreeRdpProcess(QObject *parent)
    : QObject(parent)
{
    m_child.setProcessChannelMode(QProcess::MergedChannels);
    m_stopTimer.setSingleShot(true);
    connect(&m_stopTimer, &QTimer::timeout, this, &FreeRdpProcess::onStopTimeout);
    connect(&m_child, &QProcess::readyRead, this, &FreeRdpProcess::readOutput);
    connect(&m_child, &QProcess::errorOccurred, this, &FreeRdpProcess::onError);
    connect(&m_child, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &FreeRdpProcess::onFinished);
}

FreeRdpProcess::~FreeRdpProcess()
{
    m_child.disconnect(this);
}

void FreeRdpProcess::start(const FreeRdpCommand &command, const QProcessEnvironment &environment)
{
    qCInfo(lcFreeRdp) << "xfreerdp" << command.arguments;
    m_tail = OutputTail(command.secrets);
    m_child.setProcessEnvironment(environment);
    m_child.start(QStringLiteral("xfreerdp"), command.arguments);
    // What it asks for beyond these lines meets the end of its input, so it can never wait for an answer.
    m_child.write(command.input);
    m_child.closeWriteChannel();
}

void FreeRdpProcess::stop()
{
    if (m_finished || m_stopping)
        return;
    m_stopping = true;
    m_stopTimer.start(TerminateLimitMs);
    m_child.terminate();
}

void FreeRdpProcess::readOutput()
{
    m_tail.append(m_child.readAll());
}

// Every other error is followed by finished(), which tells more.
void FreeRdpProcess::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        finish(EndReason::ClientMissing,
               QStringLiteral("xfreerdp did not start: %1").arg(m_child.errorString()));
}

void FreeRdpProcess::onFinished(int exitCode, QProcess::ExitStatus status)
{
    readOutput();
    const bool crashed = status == QProcess::CrashExit;
    const QString raw = crashed ? QStringLiteral("xfreerdp was ended by signal %1").arg(exitCode)
                                : QStringLiteral("xfreerdp ended with exit code %1").arg(exitCode);
    if (m_stopping)
        finish(EndReason::Stopped, raw);
    else
        finish(crashed ? EndReason::ClientFault : reasonForExitCode(exitCode), raw);
}

void FreeRdpProcess::onStopTimeout()
{
    if (m_killed) {
        finish(EndReason::Stopped, QStringLiteral("xfreerdp could not be killed"));
        return;
    }
    m_killed = true;
    m_stopTimer.start(KillLimitMs);
    m_child.kill();
}

void FreeRdpProcess::finish(EndReason reason, const QString &raw)
{
    if (m_finished)
        return;
    m_finished = true;
    m_stopTimer.stop();
    qCInfo(lcFreeRdp) << raw;
    emit ended({reason, raw, m_tail.lines()});
}
