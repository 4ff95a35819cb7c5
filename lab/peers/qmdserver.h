// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/qmdspool.h"
#include "lab-peers/tlsserver.h"

#include <QHash>
#include <QUrl>

// A QMD management server: devices check in with it, send heartbeats and their configuration, and fetch what
// it has for them. What it tells a device waits in the spool.
class QmdServer : public TlsServer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,    // waits before each answer, see setDelay()
        Silent,  // never answers
        Error,   // answers 500
        Cut,     // closes the connection in the middle of an answer
        Rubbish, // answers with bytes that are no JSON
        Huge,    // answers with 50 MB
        Redirect // sends the device elsewhere, see setRedirect()
    };
    Q_ENUM(Mode)
    static constexpr quint16 defaultPort = 8080;
    static constexpr int hugeBody = 50 * 1000 * 1000;

    explicit QmdServer(const QString &spoolFolder, QObject *parent = nullptr);

    // The mode of a word: "normal", "slow", "silent", "500", "cut", "rubbish", "huge" or "redirect"; false
    // for others.
    static bool modeOf(const QString &word, Mode *mode);

    // In force until the spool's own mode says otherwise.
    void setMode(Mode mode) { m_mode = mode; }
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    void setRedirect(const QUrl &target) { m_redirect = target; }
    const QmdSpool &spool() const { return m_spool; }

    // The requests so far, a line each: method, resource ("checkin" for the device itself, "?" for what is
    // none) and the answer's status, 0 without one.
    QStringList requests() const { return m_requests; }
    // The last body that was sent to a resource.
    QByteArray body(const QString &resource) const { return m_bodies.value(resource); }

signals:
    // As in requests(), with the serial number in front.
    void requestReceived(const QString &line);

protected:
    void receive(QTcpSocket *socket) override;

private:
    struct Request;

    Mode mode() const;
    void handle(QTcpSocket *socket, const Request &request);
    QByteArray answerTo(const Request &request, int *status) const;
    QByteArray message(const Request &request) const;
    void send(QTcpSocket *socket, int status, const QByteArray &body) const;

    QmdSpool m_spool;
    Mode m_mode = Mode::Normal;
    int m_delay = 5000;
    QUrl m_redirect;
    QStringList m_requests;
    QHash<QString, QByteArray> m_bodies;
};
