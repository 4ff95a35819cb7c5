// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/devicejob.h"
#include "console/options.h"
#include "console/progressline.h"
#include "console/result.h"

#include <QList>
#include <QObject>

#include <optional>

/// How the console ends.
enum ExitCode {
    AllDone = 0,
    DeviceRefused = 1,
    WrongCommandLine = 2,
    DeviceSilent = 3,
    Trouble = 4, ///< on our side: a file, a name, a socket, a question answered with no
};

/// One run of the console: finds the devices, has them worked on, prints what came of each.
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
    std::optional<Task> task(QString *error) const;
    bool addUpdate(Task *task, QString *error) const;
    void discover();
    void work();
    bool mayGoOn();
    void take(const Result &result);
    void print(const Result &result);
    void printAll();
    bool keep(Result &result);
    void fail(const QString &error, int code = Trouble);
    void end();

    Options m_options;
    Task m_task;
    QList<QHostAddress> m_devices;
    QList<Result> m_results;
    ProgressLine m_progress;
    int m_total = 0;
};
