// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/devicejob.h"

#include <QList>
#include <QObject>

/// Runs the jobs of many devices, at most `parallel` at once.
class WorkerPool : public QObject
{
    Q_OBJECT

public:
    WorkerPool(const Task &task, const QList<QHostAddress> &devices, int parallel, QObject *parent = nullptr);

    /// Starts the first job from the event loop, after this function has returned.
    void start();

signals:
    void deviceEnded(const Result &result);
    void ended();

private:
    void startNext();
    void handleResult(const Result &result);

    Task m_task;
    QList<QHostAddress> m_waiting;
    int m_parallel;
    int m_running = 0;
    bool m_ended = false;
};
