// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/freerdpprocess.h"

#include <QLoggingCategory>

#include <csignal>

Q_LOGGING_CATEGORY(lcFreeRdp, "kt.session.freerdp")

FreeRdpProcess::FreeRdpProcess(QObject *parent)
    : QObject(parent)
    , m_child(SIGKILL) // or a launcher that kills this process would stay behind a full-screen orphan
{
    m_child.setProcessChannelMode(QProcess::MergedChannels);
    m_stopTimer.setSingleShot(true);
    connect(&m_stopTimer, &QTimer::timeout, this, &FreeRdpProcess::handleStopTimeout);
    connect(&m_child, &QProcess::readyRead, this, &FreeRdpProcess::readOutput);
    connect(&m_child, &QProcess::errorOccurred, this, &FreeRdpProcess::handleError);
    connect(&m_child, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &FreeRdpProcess::handleFinished);
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
    // Closing the input keeps the program from waiting for further answers.
    m_child.write(command.input);
    m_child.closeWriteChannel();
}

void FreeRdpProcess::stop()
{
    if (m_finished || m_stopping)
        return;
    m_stopping = true;
    m_stopTimer.start(terminateLimitMs);
    m_child.terminate();
}

void FreeRdpProcess::readOutput()
{
    m_tail.append(m_child.readAll());
}

/// finished() follows every other error and carries the details.
void FreeRdpProcess::handleError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        finish(EndReason::ClientMissing,
               QStringLiteral("xfreerdp did not start: %1").arg(m_child.errorString()));
}

void FreeRdpProcess::handleFinished(int exitCode, QProcess::ExitStatus status)
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

void FreeRdpProcess::handleStopTimeout()
{
    if (m_killed) {
        finish(EndReason::Stopped, QStringLiteral("xfreerdp could not be killed"));
        return;
    }
    m_killed = true;
    m_stopTimer.start(killLimitMs);
    m_child.kill();
}

void FreeRdpProcess::finish(EndReason reason, const QString &raw)
{
    if (m_finished)
        return;
    m_finished = true;
    m_stopTimer.stop();
    qCInfo(lcFreeRdp) << raw;
    SessionEnd end{reason, raw, m_tail.lines()};
    if (reason == EndReason::CertificateRefused)
        end.certificate = certificateChange(end.output, readKnownHosts());
    emit ended(end);
}
