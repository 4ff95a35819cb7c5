// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

class MessageDispatcher;
class SettingsApp;

/// Connects the requests of the management server to the main window, which carries them out.
namespace ManagementActions {

/// The window must outlive the dispatcher. Several reset requests in one list cause one reset.
void connectTo(MessageDispatcher &dispatcher, SettingsApp &window);

} // namespace ManagementActions
