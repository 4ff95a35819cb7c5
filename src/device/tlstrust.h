// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The authorities that vouch for TLS servers.
namespace TlsTrust {

/// Makes every TLS connection that is opened from now on trust the device's CA certificates and no others, or
/// the system's while the device has none. Cheap when the certificates have not changed.
void refresh();

} // namespace TlsTrust
