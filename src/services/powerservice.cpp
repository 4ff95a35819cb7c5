// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/powerservice.h"

#include "device/devicetools.h"
#include "update/updatemodule.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcPower, "kt.services.power")

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
    run(DeviceTools::reboot());
}

void PowerService::shutDown()
{
    run(DeviceTools::shutDown());
}

void PowerService::sleep()
{
    run(DeviceTools::sleep());
}

void PowerService::setLocked(bool locked)
{
    m_locked = locked;
    emit lockChanged(locked);
}

void PowerService::run(const ToolCall &call)
{
    if (m_locked)
        qCWarning(lcPower) << "firmware is being installed: the device stays on";
    else
        ToolRun::start(call);
}
