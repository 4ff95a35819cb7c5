// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/updatemodule.h"

UpdateModule::UpdateModule(QObject *parent)
    : QObject(parent)
{ }

bool UpdateModule::ifUpdateIdle() const
{
    return m_state == State::Idle;
}

bool UpdateModule::ifSessionConnected() const
{
    return m_state == State::SessionConnected;
}

void UpdateModule::setIdleState()
{
    m_state = State::Idle;
}

void UpdateModule::setSessionConnectedState()
{
    m_state = State::SessionConnected;
}
