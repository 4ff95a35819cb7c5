// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/activation.h"

#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"

#include <NetworkManagerQt/Manager>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace Activation {

namespace {

using NetworkManager::Device;

constexpr int lookMs = 50;
constexpr int disconnectLimitMs = 8000;

/// Follows a device from the start of an activation to its end.
class Watch
{
public:
    explicit Watch(const Device::Ptr &device)
    {
        QObject::connect(device.data(), &Device::stateChanged, &m_receiver,
                         [this](Device::State now, Device::State, Device::StateChangeReason reason) {
                             note(now, reason);
                         });
    }

    bool hasEnded() const { return m_hasEnded; }
    Outcome outcome() const { return m_outcome; }

private:
    /// The end of what was under way before is not ours.
    void note(Device::State now, Device::StateChangeReason reason)
    {
        if (now >= Device::Preparing && now < Device::Activated)
            m_hasBegun = true;
        else if (m_hasBegun && now == Device::Activated)
            end(Outcome::End::Connected, reason);
        else if (m_hasBegun && (now == Device::Failed || now <= Device::Disconnected))
            end(Outcome::End::Failed, reason);
    }

    void end(Outcome::End how, Device::StateChangeReason reason)
    {
        if (m_hasEnded)
            return;
        m_hasEnded = true;
        m_outcome.end = how;
        m_outcome.reason = reason;
    }

    QObject m_receiver;
    bool m_hasBegun = false;
    bool m_hasEnded = false;
    Outcome m_outcome;
};

} // namespace

bool waitFor(const std::function<bool()> &condition, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    QTimer look; // what the kernel knows makes no event
    look.start(lookMs);
    while (!condition()) {
        if (clock.hasExpired(limitMs))
            return false;
        QEventLoop loop;
        QObject::connect(&look, &QTimer::timeout, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

Outcome connect(const Device::Ptr &device, const QString &profilePath, const QString &accessPoint,
                int limitMs, const GoOn &goOn)
{
    Watch watch(device);
    Outcome outcome;
    if (!NetworkService::succeeded(
            NetworkManager::activateConnection(profilePath, device->uni(), accessPoint), outcome.error))
        return outcome;
    bool isStopped = false;
    const bool isOver = waitFor(
        [&] {
            isStopped = goOn && !goOn();
            return isStopped || watch.hasEnded();
        },
        limitMs);
    if (watch.hasEnded())
        return watch.outcome();
    outcome.end = isOver ? Outcome::End::Stopped : Outcome::End::TimedOut;
    return outcome;
}

bool disconnect(const Device::Ptr &device, QString &error)
{
    const QString interface = device->interfaceName();
    if (device->state() > Device::Disconnected
        && !NetworkService::succeeded(device->disconnectInterface(), error) && device->isActive())
        return false;
    if (waitFor([&] { return !KernelNetwork::address(interface); }, disconnectLimitMs))
        return true;
    error = QStringLiteral("%1 keeps its address").arg(interface);
    return false;
}

} // namespace Activation
