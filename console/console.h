// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/devicejob.h"
#include "console/expected.h"
#include "console/options.h"
#include "console/progressline.h"
#include "console/result.h"

#include <QList>
#include <QObject>

/// The exit status.
enum ExitCode {
    AllDone = 0,
    DeviceRefused = 1,
    WrongCommandLine = 2,
    DeviceSilent = 3,
    Trouble = 4, ///< on this machine: a file, a name, a socket, a declined confirmation
};

/// One run of the console: finds the devices, runs their jobs and prints the results.
class Console : public QObject
{
    Q_OBJECT

public:
    explicit Console(const Options &options, QObject *parent = nullptr);

    void start();

signals:
    /// With the exit code.
    void ended(int code);

private:
    Expected<Task> task() const;
    Expected<QByteArray> updateRequest() const;
    void discover();
    void handleFound(const Result &result);
    void work();
    bool isConfirmed();
    void handleResult(const Result &result);
    void print(const Result &result);
    void printAll();
    Result withDocumentSaved(Result result) const;
    void fail(const QString &error, int code = Trouble);
    void end();

    Options m_options;
    Task m_task;
    QList<QHostAddress> m_devices;
    QList<Result> m_results;
    ProgressLine m_progress;
    int m_total = 0;
};
