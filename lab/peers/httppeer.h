// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/tlsserver.h"

#include <QStringList>

/// Returns the reason phrase of an HTTP status.
QByteArray reasonPhrase(int status);

/// A request without a body.
struct HttpRequest
{
    QString method;
    QString target;
    QByteArray credentials; ///< "user:password" of basic authentication, in the client's encoding

    static HttpRequest parse(const QByteArray &head);
    QString user() const; ///< "-" when absent
};

/// Base of the lab's HTTP servers for requests without a body. It reads requests and records a line for each.
class HttpPeer : public TlsServer
{
    Q_OBJECT

public:
    using TlsServer::TlsServer;

    /// Returns a line for each request: method, target, user ("-" when absent) and the reply's status (0: no
    /// reply).
    QStringList requests() const { return m_requests; }

signals:
    void requestReceived(const QString &line);

protected:
    /// Sends a reply and returns its status; 0 without a reply.
    virtual int respond(QTcpSocket *socket, const HttpRequest &request) = 0;
    virtual int replyDelay() const { return 0; }

    /// Returns the head of a reply. Each of the further lines ends with "\r\n".
    static QByteArray head(int status, qint64 length, const QByteArray &furtherLines = {});

    void receive(QTcpSocket *socket) override;

private:
    void reply(QTcpSocket *socket, const HttpRequest &request);

    QStringList m_requests;
};
