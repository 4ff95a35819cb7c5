// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/devicejob.h"

#include <QList>
#include <QObject>

/// Works on many devices at once, on so many at most.
class Crew : public QObject
{
    Q_OBJECT

public:
    Crew(const Task &task, const QList<QHostAddress> &devices, int parallel, QObject *parent = nullptr);

    /// Everything happens in the event loop, nothing before this returns.
    void start();

signals:
    void deviceEnded(const Result &result);
    void ended();

private:
    void startNext();
    void takeResult(const Result &result);

    Task m_task;
    QList<QHostAddress> m_waiting;
    int m_parallel;
    int m_running = 0;
    bool m_ended = false;
};
