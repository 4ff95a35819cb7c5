// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/servicenotifier.h"

#include <QCursor>
#include <QLoggingCategory>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <systemd/sd-daemon.h>

Q_LOGGING_CATEGORY(lcService, "kt.app.service")

namespace {

/// A hang is noticed at most this part of the limit too early.
constexpr std::uint64_t signsPerLimit = 15;

void notify(const char *state)
{
    const int result = sd_notify(0, state);
    if (result < 0)
        qCWarning(lcService) << "the service manager cannot be told" << state << std::strerror(-result);
}

} // namespace

ServiceNotifier::ServiceNotifier(QObject *parent)
    : QObject(parent)
{
    connect(&m_signsOfLife, &QTimer::timeout, this, [] {
        // The X server knows. Without its reply, nothing that we draw arrives.
        static_cast<void>(QCursor::pos());
        notify("WATCHDOG=1");
    });
}

void ServiceNotifier::notifyReady()
{
    notify("READY=1");
    std::uint64_t limitMicroseconds = 0;
    if (sd_watchdog_enabled(0, &limitMicroseconds) > 0)
        m_signsOfLife.start(std::chrono::milliseconds(limitMicroseconds / 1000 / signsPerLimit));
}
