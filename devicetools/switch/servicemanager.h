// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// Requests to the machine's service manager over the system bus. None waits until a unit has started or
/// ended: the caller may belong to a unit that ends because of it.
namespace ServiceManager {

struct Reply
{
    bool accepted = false;
    bool noSuchUnit = false; ///< the unit, or one that it requires, is not installed or is masked
    QString error;
};

Reply start(const char *unit);
Reply restart(const char *unit);
/// Forgets that the unit has failed, and how often it was started lately.
Reply resetFailed(const char *unit);

} // namespace ServiceManager
