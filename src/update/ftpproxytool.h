// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "shared/childprocess.h"

#include <QObject>
#include <QTimer>

class QNetworkProxy;
class QUrl;

/// The tool of the device that fetches an image from an FTP server through a proxy, and puts it in place. Of
/// its progress nothing is known but that it prints dots; what is reported is an estimate by time.
class FtpProxyTool : public QObject
{
    Q_OBJECT

public:
    static constexpr int progressMs = 3000;     ///< for each 5 %
    static constexpr int silenceLimitMs = 3000; ///< between two outputs
    static constexpr int startLimitMs = 30000;  ///< until the first output
    static constexpr int terminationMs = 500;   ///< for an end on request

    explicit FtpProxyTool(QObject *parent = nullptr);
    ~FtpProxyTool() override;

    /// False when the image cannot be made way for.
    bool start(const QUrl &url, const QNetworkProxy &proxy);

public slots:
    void readUpdate();
    void setProxyFtpProgress();
    void abortFtpProxy();
    void finishedUpdateProcess(int exitCode, QProcess::ExitStatus status);

signals:
    void progress(int percentage);
    /// Whether the image is in place. Nothing unfinished is.
    void ended(bool succeeded);

private:
    /// The tool leads a process group of its own, which holds whatever it starts.
    class Process : public ChildProcess
    {
    public:
        Process();

    protected:
        void setupChildProcess() override;
    };

    void letGo();
    void signalGroup(int number);
    void kill();

    Process m_process;
    QTimer m_progressTimer;
    QTimer m_watchdog;
    bool m_awaitingFirstDots = false;
    QByteArray m_dots; ///< the end of the output
    int m_percentage = 0;
};
