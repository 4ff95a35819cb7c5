// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QSize>
#include <QString>

#include <optional>

/// The two files by which the launcher and the session client talk: the description of a session and its
/// outcome. docs/session-client.md describes both.
namespace ConnectionFile {

/// What a session's description is made of, beside the configuration document.
struct Session
{
    QString address;
    bool autoDisconnect = false; ///< nobody waits for an explanation of a failure
    QSize screen;                ///< of the primary screen, in pixels
    std::optional<int>
        secondaryAtLeft; ///< set while a second display is in use; 1 when it stands on the left
    QJsonObject proxy;   ///< "network settings"/"proxy"
};

/// How a session ended.
enum class Verdict {
    NoError = 0,
    ConnectionError = 1,  ///< the user is told to check the address
    ConnectionFailed = 2, ///< the client has explained itself
};

/// The description for one session, with the log-on and start program that `configuration` names.
QJsonObject describe(const Session &session, const QJsonObject &configuration);
/// The proxy on the way to a server, as a URL; a pair of double quotes when there is none.
QString proxyUrl(const QJsonObject &proxy, const QString &server);
/// Writes the description, readable by its owner alone. Where that fails there is none, and a line in the
/// log.
bool write(const QString &path, const QJsonObject &description);
/// The verdict in the content of a status file; text that does not parse is a status other than 6.
Verdict classify(const QByteArray &status);

} // namespace ConnectionFile
