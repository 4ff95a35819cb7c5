// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/agentorders.h"

#include "app/settingsapp.h"
#include "management/messagedispatcher.h"

#include <QTimer>

#include <memory>

namespace {

/// The first one counts: each of them would start the tool and wait for it.
void connectResets(MessageDispatcher &dispatcher, SettingsApp &window)
{
    const auto asked = std::make_shared<bool>(false);
    QObject::connect(&dispatcher, &MessageDispatcher::ask_resetDevice, &window, [&window, asked] {
        if (*asked)
            return;
        *asked = true;
        QTimer::singleShot(0, &window, [asked] { *asked = false; });
        window.resetDevice();
    });
}

/// A server that has its configuration accepted expects the device to follow it: what the merge has left to
/// be done is done at once.
void connectMerges(MessageDispatcher &dispatcher, SettingsApp &window)
{
    QObject::connect(&dispatcher, &MessageDispatcher::mergeRemoteConfig, &window,
                     [&window](const QJsonObject &remote, int *result) {
                         emit window.mergeRemoteConfig(remote, result);
                         if (*result == 0)
                             emit window.applyConfig();
                     });
    QObject::connect(&dispatcher, &MessageDispatcher::applyConfig, &window, &SettingsApp::applyConfig);
}

} // namespace

void AgentOrders::connectTo(MessageDispatcher &dispatcher, SettingsApp &window)
{
    QObject::connect(&dispatcher, &MessageDispatcher::firmwareUpdateURL, &window,
                     &SettingsApp::on_updateByURL);
    QObject::connect(&dispatcher, &MessageDispatcher::check_resetPossible, &window,
                     &SettingsApp::checkResetPossible);
    connectResets(dispatcher, window);
    connectMerges(dispatcher, window);
}
