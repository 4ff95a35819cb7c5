// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/powerservice.h"

#include "device/devicetools.h"
#include "update/updatemodule.h"

PowerService::PowerService(const UpdateModule &update, QObject *parent)
    : QObject(parent)
    , m_update(update)
{ }

void PowerService::checkResetPossible(int *result) const
{
    if (result)
        *result = m_update.ifUpdateIdle() || m_update.ifSessionConnected() ? 0 : 1;
}

void PowerService::resetDevice()
{
    ToolRun::start(DeviceTools::reboot());
}

void PowerService::shutDown()
{
    ToolRun::start(DeviceTools::shutDown());
}

void PowerService::sleep()
{
    ToolRun::start(DeviceTools::sleep());
}
