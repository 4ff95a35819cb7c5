// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

class MessageDispatcher;
class SettingsApp;

/// What the management server asks of the device, carried out by the main window.
namespace AgentOrders {

/// The window outlives the dispatcher, or owns it. A list that asks for several resets gets one.
void connectTo(MessageDispatcher &dispatcher, SettingsApp &window);

} // namespace AgentOrders
