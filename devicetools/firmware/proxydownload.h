// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// A file from an FTP server that only an HTTP proxy can reach.
struct ProxyDownload
{
    QString url;
    QString proxyHost;
    int proxyPort = 0;
    QString proxyUser;
    QString proxyPassword;
    QString target;

    /// From the arguments URL HOST PORT USER PASSWORD; nothing if one of them is not what it should be.
    static std::optional<ProxyDownload> from(const QStringList &arguments, const QString &target);

    /// Fetches the file and puts it in the target's place when it is whole and on the disk. Prints a line
    /// with dots at least every second while data arrives. Returns an empty text, or what went wrong; nothing
    /// is left behind then.
    QString run() const;
};
