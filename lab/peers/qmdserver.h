// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/qmdspool.h"
#include "lab-peers/tlsserver.h"

#include <QHash>
#include <QUrl>

#include <optional>

/// A QMD management server. Devices check in, send heartbeats and their configuration, and fetch documents.
/// The spool holds the messages for devices.
class QmdServer : public TlsServer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,    ///< waits before each reply, see setDelay()
        Silent,  ///< never replies
        Error,   ///< replies with status 500
        Cut,     ///< closes the connection in the middle of a reply
        Rubbish, ///< replies with bytes that are not JSON
        Huge,    ///< replies with 50 MB
        Redirect ///< redirects the device, see setRedirect()
    };
    Q_ENUM(Mode)
    static constexpr quint16 defaultPort = 8080;
    static constexpr int hugeBody = 50 * 1000 * 1000;

    explicit QmdServer(const QString &spoolFolder, QObject *parent = nullptr);

    /// Returns the mode of a word: "normal", "slow", "silent", "500", "cut", "rubbish", "huge" or "redirect".
    static std::optional<Mode> modeOf(const QString &word);

    /// Sets the mode for a spool without a mode file.
    void setMode(Mode mode) { m_mode = mode; }
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    void setRedirect(const QUrl &target) { m_redirect = target; }
    const QmdSpool &spool() const { return m_spool; }

    /// Returns a line for each request: method, resource ("checkin" for the device itself, "?" for an unknown
    /// one) and the reply's status, 0 without a reply.
    QStringList requests() const { return m_requests; }
    /// Returns the last request body for a resource.
    QByteArray body(const QString &resource) const { return m_bodies.value(resource); }

signals:
    /// A line as in requests(), with the serial number in front.
    void requestReceived(const QString &line);

protected:
    void receive(QTcpSocket *socket) override;

private:
    struct Request;
    struct Reply
    {
        int status = 200; ///< 0: no reply
        QByteArray body = {};
    };

    Mode mode() const;
    void handle(QTcpSocket *socket, const Request &request);
    Reply replyTo(const Request &request) const;
    QByteArray message(const Request &request) const;
    void send(QTcpSocket *socket, const Reply &reply) const;

    QmdSpool m_spool;
    Mode m_mode = Mode::Normal;
    int m_delay = 5000;
    QUrl m_redirect;
    QStringList m_requests;
    QHash<QString, QByteArray> m_bodies;
};
