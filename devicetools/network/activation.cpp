// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/activation.h"

#include "network-tools/kernelnetwork.h"
#include "network-tools/networkservice.h"

#include <NetworkManagerQt/ActiveConnection>
#include <NetworkManagerQt/Manager>

#include <QDBusPendingReply>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <optional>

namespace Activation {

namespace {

using NetworkManager::ActiveConnection;
using NetworkManager::Device;

constexpr int lookMs = 50;
constexpr int disconnectLimitMs = 8000;
/// The reason of a failure may come a little after the failure.
constexpr int reasonLimitMs = 500;

/// Why an attempt has failed is told of the device, not of the connection.
class FailureNote
{
public:
    explicit FailureNote(const Device::Ptr &device)
    {
        QObject::connect(device.data(), &Device::stateChanged, &m_receiver,
                         [this](Device::State now, Device::State, Device::StateChangeReason reason) {
                             if (now == Device::Failed || now == Device::Unavailable)
                                 m_reason = reason;
                         });
    }

    std::optional<Device::StateChangeReason> reason() const { return m_reason; }

private:
    QObject m_receiver;
    std::optional<Device::StateChangeReason> m_reason;
};

/// Another attempt may have been under way on the device, so we look at our own.
bool hasEnded(const ActiveConnection &attempt)
{
    return attempt.uuid().isEmpty() || attempt.state() == ActiveConnection::Activated
        || attempt.state() == ActiveConnection::Deactivated;
}

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
    const FailureNote failure(device);
    Outcome outcome;
    const QDBusPendingReply<QDBusObjectPath> reply
        = NetworkManager::activateConnection(profilePath, device->uni(), accessPoint);
    if (!NetworkService::succeeded(reply, outcome.error))
        return outcome;
    const ActiveConnection attempt(reply.value().path());
    bool isStopped = false;
    const bool isOver = waitFor(
        [&] {
            isStopped = goOn && !goOn();
            return isStopped || hasEnded(attempt);
        },
        limitMs);
    if (!isOver) {
        outcome.end = Outcome::End::TimedOut;
    } else if (isStopped) {
        outcome.end = Outcome::End::Stopped;
    } else if (attempt.state() == ActiveConnection::Activated) {
        outcome.end = Outcome::End::Connected;
    } else {
        outcome.end = Outcome::End::Failed;
        waitFor([&] { return failure.reason().has_value(); }, reasonLimitMs);
        outcome.reason = failure.reason().value_or(Device::UnknownReason);
    }
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
