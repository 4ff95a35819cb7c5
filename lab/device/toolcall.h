// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

#include <QStringList>

/// One call of a device tool.
struct ToolCall
{
    DeviceRoot root;
    QString name;
    QStringList arguments;

    QString argument(int index) const { return arguments.value(index); }

    /// Returns the most specific of the files NAME.FIRST.SECOND, NAME.FIRST and NAME in a folder of the lab,
    /// where FIRST and SECOND are the call's arguments. Empty when none exists.
    QString fileFor(const QString &labFolder) const;
};
