// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "network-tools/profile.h"

/// The certificates of a Wi-Fi network, read from the device's store. NetworkManager is given their contents,
/// so that the store's files need not be readable for anyone else.
namespace CertificateFile {

/// Nothing, and an error, when one is missing, too large, or not in the store.
std::optional<Profile::Certificates> read(const WifiNetwork &network, QString &error);

} // namespace CertificateFile
