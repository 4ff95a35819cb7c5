// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-peers/tlsserver.h"

#include <QProcess>
#include <QSslSocket>

bool TlsServer::start(const QHostAddress &address, quint16 port)
{
    if (m_encrypted && !makeCertificate())
        return false;
    if (listen(address, port))
        return true;
    m_fault = QStringLiteral("%1 port %2: %3").arg(address.toString()).arg(port).arg(errorString());
    return false;
}

/// Reads key and certificate through a pipe, so that no file of them remains.
bool TlsServer::makeCertificate()
{
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  QProcess::splitCommand(QStringLiteral(
                      "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 30"
                      " -subj \"/CN=A server of the lab\" -keyout /dev/stdout -out /dev/stdout")));
    openssl.waitForFinished();
    const QByteArray made = openssl.readAllStandardOutput();
    m_key = QSslKey(made, QSsl::Ec);
    m_certificate = QSslCertificate(made);
    if (!m_key.isNull() && !m_certificate.isNull())
        return true;
    m_fault = QStringLiteral("openssl made no certificate: %1").arg(openssl.errorString());
    return false;
}

void TlsServer::incomingConnection(qintptr descriptor)
{
    auto *socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { receive(socket); });
    if (!m_encrypted)
        return;
    socket->setLocalCertificate(m_certificate);
    socket->setPrivateKey(m_key);
    socket->startServerEncryption();
}
