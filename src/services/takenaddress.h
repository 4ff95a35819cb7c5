// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>

/// The address that is off the wired interface while the cable is out, on disk: a program that has ended
/// meanwhile puts it back after its next start. It counts until the machine restarts, which configures its
/// interfaces anew.
struct TakenAddress
{
    QString address;
    QString broadcast; ///< may be empty
    int prefixLength = 0;

    /// Nothing when no address is off, or when the machine has been restarted since.
    static std::optional<TakenAddress> load();
    void save() const;
    static void forget();
};
