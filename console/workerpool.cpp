// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/workerpool.h"

#include <QTimer>

WorkerPool::WorkerPool(const Task &task, const QList<QHostAddress> &devices, int parallel, QObject *parent)
    : QObject(parent)
    , m_task(task)
    , m_waiting(devices)
    , m_parallel(parallel)
{ }

void WorkerPool::start()
{
    QTimer::singleShot(0, this, &WorkerPool::startNext);
}

void WorkerPool::startNext()
{
    if (m_waiting.isEmpty()) {
        if (m_running == 0 && !m_ended) {
            m_ended = true;
            emit ended();
        }
        return;
    }
    if (m_running >= m_parallel)
        return;
    ++m_running;
    auto *job = new DeviceJob(m_task, m_waiting.takeFirst(), this);
    connect(job, &DeviceJob::ended, this, &WorkerPool::handleResult);
    // The event loop starts one job at a time, so that replies are read while requests are still sent.
    QTimer::singleShot(0, this, &WorkerPool::startNext);
    job->start();
}

void WorkerPool::handleResult(const Result &result)
{
    sender()->deleteLater();
    --m_running;
    emit deviceEnded(result);
    QTimer::singleShot(0, this, &WorkerPool::startNext);
}
