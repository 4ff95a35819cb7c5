// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/managementactions.h"

#include "launcher/settingsapp.h"
#include "management/messagedispatcher.h"

#include <QTimer>

#include <memory>

namespace {

/// Runs the first reset request of a list only: each run starts the tool and waits for it.
void connectResets(MessageDispatcher &dispatcher, SettingsApp &window)
{
    const auto requested = std::make_shared<bool>(false);
    QObject::connect(&dispatcher, &MessageDispatcher::ask_resetDevice, &window, [&window, requested] {
        if (*requested)
            return;
        *requested = true;
        QTimer::singleShot(0, &window, [requested] { *requested = false; });
        window.resetDevice();
    });
}

/// Applies a merged configuration at once: the server expects the device to follow it.
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

void ManagementActions::connectTo(MessageDispatcher &dispatcher, SettingsApp &window)
{
    QObject::connect(&dispatcher, &MessageDispatcher::firmwareUpdateURL, &window,
                     &SettingsApp::on_updateByURL);
    QObject::connect(&dispatcher, &MessageDispatcher::check_resetPossible, &window,
                     &SettingsApp::checkResetPossible);
    connectResets(dispatcher, window);
    connectMerges(dispatcher, window);
}
