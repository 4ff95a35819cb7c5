// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <NetworkManagerQt/Device>

#include <functional>

/// Connecting and disconnecting a device, and waiting until that has happened.
namespace Activation {

/// How an attempt to connect went.
struct Outcome
{
    enum class End {
        Connected,
        Refused, ///< NetworkManager did not begin, see `error`
        Failed,  ///< see `reason`
        TimedOut,
        Stopped, ///< by the caller
    };
    End end = End::Refused;
    NetworkManager::Device::StateChangeReason reason = NetworkManager::Device::UnknownReason;
    QString error;
};

/// Asked after each event on the bus whether to go on waiting.
using GoOn = std::function<bool()>;

/// Connects the device by a stored profile, anew if it is connected. `accessPoint` is the path of the one to
/// take, or "/".
Outcome connect(const NetworkManager::Device::Ptr &device, const QString &profilePath,
                const QString &accessPoint, int limitMs, const GoOn &goOn = nullptr);

/// Disconnects the device if it is connected, and waits until its address is gone.
bool disconnect(const NetworkManager::Device::Ptr &device, QString &error);

/// Works the event loop until `condition` holds; false when the time is up.
bool waitFor(const std::function<bool()> &condition, int limitMs);

} // namespace Activation
