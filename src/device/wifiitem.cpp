// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/wifiitem.h"

WifiItem::WifiItem(const QString &essid)
    : Item(essid)
{ }

bool compareSignalStrengthDesc(const WifiItem &a, const WifiItem &b)
{
    return a.signalStrength > b.signalStrength;
}
