// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

/// Keeps firmware updates and remote-desktop sessions apart: its state says which of them holds the device.
class UpdateModule : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle = 0,
        SessionConnected = 9, ///< a remote-desktop session is running; left when its client ends
    };

    explicit UpdateModule(QObject *parent = nullptr);

    bool ifUpdateIdle() const;
    bool ifSessionConnected() const;
    void setIdleState();
    void setSessionConnectedState();

private:
    State m_state = State::Idle;
};
