// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/certificatechange.h"
#include "session/endreason.h"
#include "session/freerdpcommand.h"
#include "session/outputtail.h"
#include "shared/childprocess.h"

#include <QMetaType>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <optional>

struct SessionEnd
{
    EndReason reason = EndReason::Ended;
    QString raw;        ///< the exit code or signal
    QStringList output; ///< the last lines of the program's output
    /// Set if the server was rejected because its certificate has changed.
    std::optional<CertificateChange> certificate = std::nullopt;
};
Q_DECLARE_METATYPE(SessionEnd)

/// Runs xfreerdp once and reports its end once. The kernel kills xfreerdp when this process dies.
class FreeRdpProcess : public QObject
{
    Q_OBJECT

public:
    static constexpr int terminateLimitMs = 3000; ///< then the process is killed
    static constexpr int killLimitMs = 2000;      ///< then its end is no longer awaited

    explicit FreeRdpProcess(QObject *parent = nullptr);
    ~FreeRdpProcess() override;

    /// Starts the program; call it once per object.
    void start(const FreeRdpCommand &command, const QProcessEnvironment &environment);
    /// Ends the session; ended() follows within the two limits.
    void stop();

signals:
    void ended(const SessionEnd &end);

private:
    void readOutput();
    void handleError(QProcess::ProcessError error);
    void handleFinished(int exitCode, QProcess::ExitStatus status);
    void handleStopTimeout();
    void finish(EndReason reason, const QString &raw);

    ChildProcess m_child;
    OutputTail m_tail;
    QTimer m_stopTimer;
    bool m_stopping = false;
    bool m_killed = false;
    bool m_finished = false;
};
