// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "shared/childprocess.h"

#include <QObject>
#include <QTimer>

class QNetworkProxy;
class QUrl;

/// Runs the device's tool that fetches an image from an FTP server through a proxy and puts it in place. The
/// tool prints only dots, so the reported progress is an estimate by time.
class FtpProxyTool : public QObject
{
    Q_OBJECT

public:
    static constexpr int progressMs = 3000;     ///< for each 5 %
    static constexpr int silenceLimitMs = 3000; ///< between two outputs
    static constexpr int startLimitMs = 30000;  ///< until the first output
    static constexpr int terminationMs = 500;   ///< between SIGTERM and SIGKILL

    explicit FtpProxyTool(QObject *parent = nullptr);
    ~FtpProxyTool() override;

    /// False when an earlier image cannot be put aside.
    bool start(const QUrl &url, const QNetworkProxy &proxy);

public slots:
    void readUpdate();
    void setProxyFtpProgress();
    void abortFtpProxy();
    void finishedUpdateProcess(int exitCode, QProcess::ExitStatus status);

signals:
    void progress(int percentage);
    /// True when the complete image is in place; no incomplete one is ever left there.
    void ended(bool succeeded);

private:
    /// The tool ends with this program, which alone knows whether its image is complete. The tool leads a
    /// process group of its own, so that its children can be stopped too.
    class Process : public ChildProcess
    {
    public:
        Process();

    protected:
        void setupChildProcess() override;
    };

    void stopWatching();
    void signalProcessGroup(int signal);
    void kill();

    Process m_process;
    QTimer m_progressTimer;
    QTimer m_watchdog;
    bool m_awaitingFirstDots = false;
    QByteArray m_dots; ///< the end of the output
    int m_percentage = 0;
};
