// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/toolrun.h"

#include <QObject>
#include <QQueue>

/// Calls that must stay in order: each starts when the one before it has ended or was given up. A tool that
/// hangs delays this queue alone.
class ToolQueue : public QObject
{
    Q_OBJECT

public:
    explicit ToolQueue(QObject *parent = nullptr);

    /// Appends a call. `done` is called when it has ended, before the next one starts.
    void add(const ToolCall &call, const ToolDone &done = nullptr);
    /// Appends a step of our own, which runs when all before it have ended.
    void add(const std::function<void()> &step);
    bool isIdle() const;
    /// Gives every call at most this long. For tests, which have no half a minute to spare.
    void setLimit(int milliseconds);

signals:
    /// The last call has ended.
    void idle();

private:
    struct Entry
    {
        ToolCall call;
        ToolDone done;
        std::function<void()> step;
    };

    void append(const Entry &entry);
    void startNext();

    QQueue<Entry> m_entries; ///< the first one is under way
    int m_limitMs = 0;       ///< 0: each call's own
};
