// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-device/deviceroot.h"

// The real interface eth0 of the lab's network namespace. Both functions do nothing unless lab/live-network
// exists and the lab's own interface lab0 stands beside eth0, so that no other machine's network is ever
// touched.
void addLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength,
                    const QString &broadcast);
void removeLiveAddress(const DeviceRoot &root, const QString &address, int prefixLength);
