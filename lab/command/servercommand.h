// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

class HttpPeer;
class LabCommand;

// What the sub-commands have in common that play an HTTP server: --address, --port and --seconds.
namespace ServerCommand {

void addOptions(LabCommand *command, quint16 defaultPort);

// Starts the server, prints "ready" and then each request until the program is ended. Returns its status.
int run(HttpPeer *server, const LabCommand &command, quint16 defaultPort);

} // namespace ServerCommand
