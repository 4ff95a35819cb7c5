// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/asker.h"

/// What the console asks devices, with the checks that tell an answer from any other datagram: its length and
/// marks, and that it is made of this very request. A device hands eight bytes of a request back as they are;
/// the console writes random ones there, so that an answer to an earlier request is not taken for this one's.
namespace Questions {

Question info(int tries);
Question document(int tries);
/// Asked once. `json` is no longer than `ConsoleFormat::longestJson`.
Question merge(const QByteArray &json);
/// A reset or an update. Asked once.
Question action(const QByteArray &request);

} // namespace Questions
