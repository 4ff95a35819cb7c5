// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

/// Change the real interface eth0 of the lab's network namespace. Both functions do nothing unless the file
/// lab/live-network and the lab's own interface lab0 exist. They therefore never change another network.
void addLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength,
                    const QString &broadcast);
void removeLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength);
