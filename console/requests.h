// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/requestsender.h"

/// The console's requests, each with a test that recognizes its reply by length, marks and token. The token
/// is eight random bytes in the request, which the device copies into its reply. It tells the reply from a
/// late reply to an earlier request.
namespace Requests {

Request info(int tries);
Request document(int tries);
/// Is sent once. `json` must not be longer than `ConsoleFormat::longestJson`.
Request merge(const QByteArray &json);
/// A reset or an update. Is sent once.
Request action(const QByteArray &plain);

} // namespace Requests
