// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class UpdateModule;
struct ToolCall;

/// Restarts the device, switches it off, and puts it to sleep, for the user, a console and the management
/// server.
class PowerService : public QObject
{
    Q_OBJECT

public:
    /// The updater outlives the object.
    explicit PowerService(const UpdateModule &update, QObject *parent = nullptr);

public slots:
    /// Writes 0 when a reset may go ahead, 1 while a firmware update is in progress.
    void checkResetPossible(int *result) const;
    void resetDevice();
    void shutDown();
    void sleep();
    /// While this is true none of them does anything.
    void setLocked(bool locked);

signals:
    void lockChanged(bool locked);

private:
    void run(const ToolCall &call);

    const UpdateModule &m_update;
    bool m_locked = false;
};
