// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

namespace {
constexpr int limitMs = 20000;
constexpr int lookMs = 5;
} // namespace

bool waitUntil(const std::function<bool()> &condition)
{
    QTimer looks; // wakes the loop
    looks.start(lookMs);
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

bool Device::start()
{
    const bool isUseless
        = JsonModule(QStringLiteral("config.json"), true).load() == JsonModule::Condition::Useless;
    bool isReplaced = false;
    bool isUnreadable = false;
    const QObject context;
    QObject::connect(&document, &StartDocument::replaced, &context, [&] { isReplaced = true; });
    QObject::connect(&document, &StartDocument::unreadable, &context, [&] { isUnreadable = true; });
    document.start();
    const bool ended = waitUntil(
        [&] { return isUnreadable || (!configuration.isProvisional() && (!isUseless || isReplaced)); });
    return ended && !isUnreadable && settle();
}

bool Device::settle()
{
    return waitUntil([this] { return !applier.isBusy() && commands.isIdle(); });
}
