// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// Menus and dialogs that are open when a session or an update starts by itself.
namespace Popups {

/// Closes them. The reply to an open question is no.
void closeAll();

} // namespace Popups
