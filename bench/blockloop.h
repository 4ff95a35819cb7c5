// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The simplest transfer from a Corvid server: loops of blocking sends and receives. It shows the lower
/// bound.
namespace BlockLoop {

/// Prints "ready", then serves the file until the process ends.
int serve(const char *address, const char *file);

/// Fetches the file that `serve` offers at this address.
int fetch(const char *address, const char *into);

} // namespace BlockLoop
