// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/tlsserver.h"

#include <QStringList>

// The words that go with a status that the lab's servers answer.
QByteArray reasonPhrase(int status);

// A request without a body: all that these peers are asked.
struct HttpRequest
{
    QString method;
    QString target;
    QByteArray credentials; // "user:password" of basic authentication, as the client encoded it

    static HttpRequest parse(const QByteArray &head);
    QString user() const; // "-" where none is given
};

// What the lab's HTTP servers for requests without a body have in common: they read requests and keep a line
// of each.
class HttpPeer : public TlsServer
{
    Q_OBJECT

public:
    using TlsServer::TlsServer;

    // The requests so far, a line each: method, target, user ("-" for none) and the reply's status (0: none).
    QStringList requests() const { return m_requests; }

signals:
    void requestReceived(const QString &line);

protected:
    // Sends what there is to send and says with which status.
    virtual int answer(QTcpSocket *socket, const HttpRequest &request) = 0;
    virtual int replyDelay() const { return 0; }

    // The head of a reply: further header lines each end with "\r\n".
    static QByteArray head(int status, qint64 length, const QByteArray &furtherLines = {});

    void receive(QTcpSocket *socket) override;

private:
    void reply(QTcpSocket *socket, const HttpRequest &request);

    QStringList m_requests;
};
