// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace Bench {

/// Connects to a server fifty times, with a client that ends at once. Prints the memory after the first and
/// the last session.
void runSessions();

/// Fills the launcher's lists with 5,000 servers and prints the time until they are painted.
void showServers();

/// Obeys the actions on the standard input; see launcheruser.cpp.
void playUser();

} // namespace Bench
