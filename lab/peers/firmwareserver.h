// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/httppeer.h"

#include <QUrl>

#include <optional>

/// A web server for the files of one folder, with faults on request.
class FirmwareServer : public HttpPeer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,      ///< pauses between the pieces of a file, see setPace()
        Truncated, ///< closes the connection after half of the file
        Stalled,   ///< sends half of the file and keeps the connection open
        Silent,    ///< never replies
        Challenge, ///< rejects every name and password
        Redirect,  ///< redirects the client, see setRedirect()
        NotFound,  ///< replies with status 404
        Error      ///< replies with status 500
    };
    Q_ENUM(Mode)
    static constexpr quint16 defaultPort = 8080;

    /// Serves the files of `folder`, and none outside it.
    explicit FirmwareServer(const QString &folder, QObject *parent = nullptr);

    /// Returns the mode of a word: "normal", "slow", "truncated", "stalled", "silent", "challenge",
    /// "redirect", "404" or "500".
    static std::optional<Mode> modeOf(const QString &word);

    /// Makes the server require this name and password.
    void setUser(const QString &name, const QString &password);
    void setMode(Mode mode) { m_mode = mode; }
    void setPace(int pieceBytes, int pauseMs);
    void setRedirect(const QUrl &target) { m_redirect = target; }

protected:
    int respond(QTcpSocket *socket, const HttpRequest &request) override;

private:
    int status(const HttpRequest &request, const QString &file) const;
    bool isAllowed(const HttpRequest &request) const;
    QString fileOf(const QString &target) const;
    void sendFile(QTcpSocket *socket, const QString &name) const;

    QString m_folder;
    QByteArray m_credentials; ///< "user:password"; empty when no log-on is required
    Mode m_mode = Mode::Normal;
    int m_pieceBytes = 1024;
    int m_pauseMs = 1000;
    QUrl m_redirect;
};
