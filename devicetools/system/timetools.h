// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

/// The clock, its zone, and the server that sets it. Each tool returns a Tool::Status.
namespace TimeTools {

/// kt-set-timezone ZONE
int setTimeZone(const QStringList &arguments);
/// kt-set-ntp-server SERVER...: from now on, and after each start of the synchroniser.
int setNtpServer(const QStringList &arguments);
/// use-ntp-server: what the synchroniser's start runs to get the stored servers.
int useNtpServer(const QStringList &arguments);
/// date -s "5 Mar 2024 07:08:09": sets the clock, and the hardware's so that a restart keeps it.
int setClock(const QStringList &arguments);

/// The stored form of what the user entered: up to eight host names or addresses. Empty if one of them is
/// neither.
QStringList servers(const QStringList &arguments);
/// A time of the local zone; null unless the text has exactly the form above.
std::optional<QDateTime> clock(const QString &text);

} // namespace TimeTools
