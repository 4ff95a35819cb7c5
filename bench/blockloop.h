// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The least that a transfer from a Corvid server can be: a loop of blocking sends and receives at either
/// end.
namespace BlockLoop {

/// Hands out the file until the process is ended; prints "ready" first.
int serve(const char *address, const char *file);

/// Fetches what `serve` hands out at this address.
int fetch(const char *address, const char *into);

} // namespace BlockLoop
