// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QTcpServer>

class QTcpSocket;

/// A server for TLS connections with a generated certificate, or for plain connections.
class TlsServer : public QTcpServer
{
    Q_OBJECT

public:
    static constexpr int longestHead = 16 * 1024;

    using QTcpServer::QTcpServer;

    void setEncrypted(bool encrypted) { m_encrypted = encrypted; }
    /// Generates the certificate with the openssl tool, then listens.
    bool start(const QHostAddress &address, quint16 port);
    QString fault() const { return m_fault; }

protected:
    void incomingConnection(qintptr descriptor) override;
    /// Called when a client has sent data.
    virtual void receive(QTcpSocket *socket) = 0;

private:
    bool makeCertificate();

    bool m_encrypted = true;
    QSslCertificate m_certificate;
    QSslKey m_key;
    QString m_fault;
};
