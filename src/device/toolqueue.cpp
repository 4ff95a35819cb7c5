// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/toolqueue.h"

ToolQueue::ToolQueue(QObject *parent)
    : QObject(parent)
{ }

void ToolQueue::add(const ToolCall &call, const ToolDone &done)
{
    append({call, done, nullptr});
}

void ToolQueue::add(const std::function<void()> &step)
{
    append({ToolCall(), nullptr, step});
}

bool ToolQueue::isIdle() const
{
    return m_entries.isEmpty();
}

void ToolQueue::setLimit(int milliseconds)
{
    m_limitMs = milliseconds;
}

void ToolQueue::append(const Entry &entry)
{
    m_entries.enqueue(entry);
    if (m_entries.size() == 1)
        startNext();
}

void ToolQueue::startNext()
{
    if (m_entries.isEmpty()) {
        emit idle();
        return;
    }
    Entry entry = m_entries.head();
    if (m_limitMs > 0)
        entry.call.limitMs = m_limitMs;
    const auto finish = [this, entry](const ToolResult &result) {
        if (entry.step)
            entry.step();
        if (entry.done)
            entry.done(result);
        m_entries.dequeue();
        startNext();
    };
    if (entry.step) // from the event loop: a step may append others
        QTimer::singleShot(0, this, [finish] { finish(ToolResult()); });
    else
        ToolRun::start(entry.call, this, finish);
}
