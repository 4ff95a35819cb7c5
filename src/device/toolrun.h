// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/commands.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <functional>

/// One call of a device tool: a shell command line, or a program with its argument list.
struct ToolCall
{
    /// A command line for the shell, as `Commands::line` builds it. Its output goes where ours goes.
    static ToolCall command(const QString &line, int limitMs = Commands::timeLimitMs);
    /// A program whose standard output is wanted.
    static ToolCall query(const QString &program, const QStringList &arguments,
                          int limitMs = Commands::timeLimitMs);

    QString program; ///< empty for a command line
    QStringList arguments;
    QString commandLine;
    int limitMs = Commands::timeLimitMs; ///< 0: the tool may take as long as it likes
};

/// How a call ended.
struct ToolResult
{
    enum class End {
        Exited,
        Crashed,
        NotStarted,
        TimedOut, ///< killed at its limit, with all that it had started
        TooLong,  ///< killed because it printed more than `Commands::outputLimit`
    };

    /// The tool came to an end by itself, whatever its exit code.
    bool ended() const { return end == End::Exited || end == End::Crashed; }
    bool succeeded() const { return end == End::Exited && exitCode == 0; }

    End end = End::NotStarted;
    int exitCode = -1; ///< meaningful for `End::Exited`
    QByteArray output; ///< of a query that ended by itself; empty for all others
};

using ToolDone = std::function<void(const ToolResult &)>;

/// A running call. Nobody waits for it: `ended` comes once, from the event loop, at its limit at the latest.
/// The object deletes itself. Each run writes one debug line, and a warning when it went wrong.
class ToolRun : public QObject
{
    Q_OBJECT

public:
    /// Starts a call. `done` is called once, unless `context` is gone by then.
    static void start(const ToolCall &call, QObject *context, const ToolDone &done);
    /// Starts a command whose end concerns nobody.
    static void start(const ToolCall &call);

signals:
    void ended(const ToolResult &result);

private:
    /// The child leads a process group of its own, so that its limit ends its children too.
    class Child : public QProcess
    {
    protected:
        void setupChildProcess() override;
    };

    explicit ToolRun(const ToolCall &call);
    ~ToolRun() override;
    void begin();
    void readOutput();
    void handleError(QProcess::ProcessError error);
    void handleFinished(int exitCode, QProcess::ExitStatus status);
    void giveUp(ToolResult::End end);
    void finish(const ToolResult &result);
    QString description() const;

    ToolCall m_call;
    Child m_process;
    QTimer m_limit;
    QElapsedTimer m_clock;
    QByteArray m_output;
    bool m_finished = false;
};
