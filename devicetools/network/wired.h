// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The wired interface, eth0. Each function returns an exit status.
namespace Wired {

/// Turns the interface on and connects it as stored, anew if it is connected.
int connect(int limitMs);
int disconnect();
int turnOn();
int turnOff();

} // namespace Wired
