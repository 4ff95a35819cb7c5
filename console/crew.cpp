// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "console/crew.h"

#include <QTimer>

Crew::Crew(const Task &task, const QList<QHostAddress> &devices, int parallel, QObject *parent)
    : QObject(parent)
    , m_task(task)
    , m_waiting(devices)
    , m_parallel(parallel)
{ }

void Crew::start()
{
    QTimer::singleShot(0, this, &Crew::startNext);
}

void Crew::startNext()
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
    connect(job, &DeviceJob::ended, this, &Crew::takeResult);
    // One by one through the event loop: answers are read while questions still go out.
    QTimer::singleShot(0, this, &Crew::startNext);
    job->start();
}

void Crew::takeResult(const Result &result)
{
    sender()->deleteLater();
    --m_running;
    emit deviceEnded(result);
    QTimer::singleShot(0, this, &Crew::startNext);
}
