// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/httppeer.h"

#include <QUrl>

// A web server that hands out the files of one folder and misbehaves as told.
class FirmwareServer : public HttpPeer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,      // a piece of a file, a pause, the next piece, see setPace()
        Truncated, // announces the whole file and closes the connection half-way
        Stalled,   // sends half a file, then nothing, and leaves the connection open
        Silent,    // never answers
        Challenge, // asks for a name and a password whatever it is given
        Redirect,  // sends the client elsewhere, see setRedirect()
        NotFound,  // answers 404
        Error      // answers 500
    };
    Q_ENUM(Mode)
    static constexpr quint16 defaultPort = 8080;

    // Serves the files of `folder` and nothing outside it.
    explicit FirmwareServer(const QString &folder, QObject *parent = nullptr);

    // The mode of a word ("normal", "slow", "truncated", "stalled", "silent", "challenge", "redirect", "404",
    // "500"); false for others.
    static bool modeOf(const QString &word, Mode *mode);

    // From then on the files are only for who gives these.
    void setUser(const QString &name, const QString &password);
    void setMode(Mode mode) { m_mode = mode; }
    void setPace(int pieceBytes, int pauseMs);
    void setRedirect(const QUrl &target) { m_redirect = target; }

protected:
    int answer(QTcpSocket *socket, const HttpRequest &request) override;

private:
    int status(const HttpRequest &request, const QString &file) const;
    bool isAllowed(const HttpRequest &request) const;
    QString fileOf(const QString &target) const;
    void sendFile(QTcpSocket *socket, const QString &name) const;

    QString m_folder;
    QByteArray m_credentials; // "user:password", nothing when anybody may have the files
    Mode m_mode = Mode::Normal;
    int m_pieceBytes = 1024;
    int m_pauseMs = 1000;
    QUrl m_redirect;
};
