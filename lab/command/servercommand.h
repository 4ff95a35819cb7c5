// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

class HttpPeer;
class LabCommand;

/// The part that the sub-commands for HTTP servers share: --address, --port and --seconds.
namespace ServerCommand {

void addOptions(LabCommand *command, quint16 defaultPort);

/// Starts the server, then prints "ready" and each request. Returns the exit status.
int run(HttpPeer *server, const LabCommand &command, quint16 defaultPort);

} // namespace ServerCommand
