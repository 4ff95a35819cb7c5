// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/ftpproxytool.h"

#include "device/commands.h"
#include "device/paths.h"
#include "update/firmwareimage.h"

#include <QLoggingCategory>
#include <QNetworkProxy>
#include <QUrl>

#include <csignal>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcFtpProxy, "kt.update.ftpproxy")

namespace {
const QByteArray firstDots(10, '.');
}

FtpProxyTool::Process::Process()
    : ChildProcess(SIGKILL)
{ }

void FtpProxyTool::Process::setupChildProcess()
{
    ChildProcess::setupChildProcess();
    ::setpgid(0, 0);
}

FtpProxyTool::FtpProxyTool(QObject *parent)
    : QObject(parent)
{
    m_progressTimer.setSingleShot(true);
    m_progressTimer.setInterval(progressMs);
    m_watchdog.setSingleShot(true);
    connect(&m_progressTimer, &QTimer::timeout, this, &FtpProxyTool::setProxyFtpProgress);
    connect(&m_watchdog, &QTimer::timeout, this, &FtpProxyTool::abortFtpProxy);
}

FtpProxyTool::~FtpProxyTool()
{
    stopWatching();
    kill();
}

bool FtpProxyTool::start(const QUrl &url, const QNetworkProxy &proxy)
{
    kill();
    if (!FirmwareImage::prepareForTool())
        return false;
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &FtpProxyTool::readUpdate);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &FtpProxyTool::finishedUpdateProcess);
    // A tool that cannot be started emits no finished().
    const auto endUnstarted = [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finishedUpdateProcess(-1, QProcess::CrashExit);
    };
    connect(&m_process, &QProcess::errorOccurred, this, endUnstarted, Qt::QueuedConnection);
    m_awaitingFirstDots = true;
    m_dots.clear();
    m_percentage = 0;
    m_watchdog.start(startLimitMs);
    m_process.setProcessEnvironment(Commands::environment());
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.start(
        Paths::onDevice(QStringLiteral("/usr/bin/kt-ftp-proxy-update")),
        {url.url(), proxy.hostName(), QString::number(proxy.port()), proxy.user(), proxy.password()},
        QIODevice::ReadOnly);
    return true;
}

void FtpProxyTool::readUpdate()
{
    m_watchdog.start(silenceLimitMs);
    QByteArray output = m_process.readAllStandardOutput();
    output.truncate(static_cast<int>(qstrnlen(output.constData(), static_cast<uint>(output.size()))));
    // The ten dots of a line may arrive one by one.
    m_dots = m_dots.right(firstDots.size() - 1) + output;
    if (!m_awaitingFirstDots)
        FirmwareImage::makeRoomForTool();
    if (!m_awaitingFirstDots || !m_dots.contains(firstDots))
        return;
    m_progressTimer.start();
    m_awaitingFirstDots = false;
}

void FtpProxyTool::setProxyFtpProgress()
{
    m_percentage += 5;
    emit progress(m_percentage);
    if (m_percentage <= 99)
        m_progressTimer.start();
}

void FtpProxyTool::stopWatching()
{
    m_process.disconnect(this);
    m_progressTimer.stop();
    m_watchdog.stop();
}

void FtpProxyTool::signalProcessGroup(int signal)
{
    const auto leader = static_cast<pid_t>(m_process.processId());
    // A tool that has just started may not lead its group yet.
    if (leader > 0 && ::kill(-leader, signal) != 0)
        ::kill(leader, signal);
}

/// Waits for the end: until then the tool may still write.
void FtpProxyTool::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    signalProcessGroup(SIGKILL);
    m_process.waitForFinished();
    FirmwareImage::finishTool(false);
}

void FtpProxyTool::abortFtpProxy()
{
    qCWarning(lcFtpProxy) << "the tool prints nothing any more";
    stopWatching();
    signalProcessGroup(SIGTERM);
    if (m_process.waitForFinished(terminationMs))
        FirmwareImage::finishTool(false);
    else
        kill();
    emit ended(false);
}

void FtpProxyTool::finishedUpdateProcess(int exitCode, QProcess::ExitStatus status)
{
    stopWatching();
    const bool succeeded = FirmwareImage::finishTool(exitCode == 0 && status == QProcess::NormalExit);
    if (!succeeded)
        qCWarning(lcFtpProxy) << "the tool ended with" << exitCode << "and without an image";
    emit ended(succeeded);
}
