// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QStringList>
#include <QTcpServer>

class QTcpSocket;

// A request without a body: all that these peers are asked.
struct HttpRequest
{
    QString method;
    QString target;
    QByteArray credentials; // "user:password" of basic authentication, as the client encoded it

    static HttpRequest parse(const QByteArray &head);
    QString user() const; // "-" where none is given
};

// What the lab's HTTP servers have in common: they listen, with a certificate of their own making or without
// one, read requests, and keep a line of each.
class HttpPeer : public QTcpServer
{
    Q_OBJECT

public:
    explicit HttpPeer(QObject *parent = nullptr);

    void setEncrypted(bool encrypted) { m_encrypted = encrypted; }

    // Makes the certificate first, with the openssl tool.
    bool start(const QHostAddress &address, quint16 port);
    QString fault() const { return m_fault; }

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

    void incomingConnection(qintptr descriptor) override;

private:
    bool makeCertificate();
    void receive(QTcpSocket *socket);
    void reply(QTcpSocket *socket, const HttpRequest &request);

    bool m_encrypted = false;
    QSslCertificate m_certificate;
    QSslKey m_key;
    QString m_fault;
    QStringList m_requests;
};
