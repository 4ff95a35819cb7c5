// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class UpdateModule;

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

private:
    const UpdateModule &m_update;
};
