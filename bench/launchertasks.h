// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace Bench {

/// Connects to a server fifty times, with a client that ends at once, and prints the memory after the first
/// and after the last session.
void runSessions();

/// Fills the launcher's lists with 5,000 servers and prints how long it takes until they are painted.
void showServers();

} // namespace Bench
