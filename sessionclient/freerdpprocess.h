// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/endreason.h"
#include "session/freerdpcommand.h"
#include "session/outputtail.h"

#include <QMetaType>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTimer>

struct SessionEnd
{
    EndReason reason = EndReason::Ended;
    QString raw;        // how the program ended, in its own terms
    QStringList output; // its last lines
};
Q_DECLARE_METATYPE(SessionEnd)

// One run of xfreerdp, from start to its one end. It dies with this process, whatever becomes of us.
class FreeRdpProcess : public QObject
{
    Q_OBJECT

public:
    static constexpr int TerminateLimitMs = 3000; // then it is killed
    static constexpr int KillLimitMs = 2000;      // then we stop waiting for it

    explicit FreeRdpProcess(QObject *parent = nullptr);
    ~FreeRdpProcess() override;

    // Once per object.
    void start(const FreeRdpCommand &command, const QProcessEnvironment &environment);
    // Ends the session; ended() follows within the two limits.
    void stop();

signals:
    void ended(const SessionEnd &end);

private:
    class Child : public QProcess
    {
    protected:
        void setupChildProcess() override;
    };

    void readOutput();
    void onError(QProcess::ProcessError error);
    void onFinished(int exitCode, QProcess::ExitStatus status);
    void onStopTimeout();
    void finish(EndReason reason, const QString &raw);

    Child m_child;
    OutputTail m_tail;
    QTimer m_stopTimer;
    bool m_stopping = false;
    bool m_killed = false;
    bool m_finished = false;
};
