// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/proxyrelay.h"

#include <QLoggingCategory>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <functional>

Q_LOGGING_CATEGORY(lcProxyRelay, "kt.session.proxy")

namespace {

constexpr int defaultPort = 80;
constexpr qint64 bufferSize = 256 * 1024; ///< per direction
constexpr char endOfHead[] = "\r\n\r\n";

QByteArray logOnLine(const QUrl &proxy)
{
    const QString pair
        = proxy.userName(QUrl::FullyDecoded) + QLatin1Char(':') + proxy.password(QUrl::FullyDecoded);
    return "Proxy-Authorization: Basic " + pair.toUtf8().toBase64() + "\r\n";
}

/// One connection of xfreerdp through the proxy. It deletes itself when both ends are closed.
class Tunnel : public QObject
{
public:
    Tunnel(QTcpSocket *client, const QUrl &proxy, std::function<void()> rejected, QObject *parent)
        : QObject(parent)
        , m_client(client)
        , m_logOn(logOnLine(proxy))
        , m_rejected(std::move(rejected))
    {
        client->setParent(this);
        for (QTcpSocket *socket : {client, &m_proxy}) {
            socket->setReadBufferSize(bufferSize);
            connect(socket, &QTcpSocket::disconnected, this, [this, socket] { close(socket); });
        }
        connect(client, &QTcpSocket::readyRead, this, &Tunnel::readClient);
        connect(client, &QTcpSocket::bytesWritten, this, &Tunnel::readProxy);
        connect(&m_proxy, &QTcpSocket::readyRead, this, &Tunnel::readProxy);
        connect(&m_proxy, &QTcpSocket::bytesWritten, this, &Tunnel::readClient);
        connect(&m_proxy, &QTcpSocket::errorOccurred, this, [this] { close(&m_proxy); });
        m_proxy.setProxy(QNetworkProxy::NoProxy);
        m_proxy.connectToHost(proxy.host(), quint16(proxy.port(defaultPort)));
    }

    ~Tunnel() override
    {
        m_client->disconnect(this);
        m_proxy.disconnect(this);
    }

private:
    void readClient()
    {
        if (m_requested)
            move(m_client, &m_proxy);
        else
            readRequest();
    }

    void readRequest()
    {
        m_request += m_client->read(ProxyRelay::longestRequest - m_request.size());
        const int end = m_request.indexOf(endOfHead);
        if (end < 0 && m_request.size() < ProxyRelay::longestRequest)
            return;
        if (end < 0 || !m_request.startsWith("CONNECT ")) {
            m_client->abort();
            return;
        }
        m_requested = true;
        m_request.insert(end + 2, m_logOn);
        m_proxy.write(m_request);
        readClient();
    }

    void readProxy()
    {
        if (!m_answered) {
            const QByteArray status = m_proxy.peek(12); // "HTTP/1.1 407"
            if (status.size() < 12)
                return;
            m_answered = true;
            if (status.endsWith(" 407"))
                m_rejected();
        }
        move(&m_proxy, m_client);
    }

    /// Moves what the other side's buffer has room for; the rest follows when that has been written.
    static void move(QTcpSocket *from, QTcpSocket *to)
    {
        const qint64 room = bufferSize - to->bytesToWrite();
        if (room > 0 && from->bytesAvailable() > 0)
            to->write(from->read(room));
    }

    void close(QTcpSocket *closed)
    {
        QTcpSocket *other = closed == m_client ? &m_proxy : m_client;
        if (other->state() == QTcpSocket::ClosingState) // what it was given is still being written
            return;
        if (other->state() == QTcpSocket::ConnectedState) {
            other->write(closed->readAll()); // at most one buffer
            other->disconnectFromHost();
        } else {
            other->abort();
        }
        if (other->state() == QTcpSocket::UnconnectedState)
            deleteLater();
    }

    QTcpSocket *m_client;
    QTcpSocket m_proxy;
    QByteArray m_logOn;
    std::function<void()> m_rejected;
    QByteArray m_request;
    bool m_requested = false;
    bool m_answered = false;
};

} // namespace

ProxyRelay::ProxyRelay(QObject *parent)
    : QObject(parent)
{
    m_server.setMaxPendingConnections(mostTunnels);
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_server, &QTcpServer::newConnection, this, &ProxyRelay::openTunnels);
}

QUrl ProxyRelay::start(const QUrl &proxy)
{
    m_proxy = proxy;
    if (!m_server.listen(QHostAddress::LocalHost)) {
        qCWarning(lcProxyRelay).noquote() << "cannot log on to the proxy:" << m_server.errorString();
        return proxy;
    }
    QUrl address;
    address.setScheme(QStringLiteral("http"));
    address.setHost(QStringLiteral("127.0.0.1"));
    address.setPort(m_server.serverPort());
    return address;
}

void ProxyRelay::openTunnels()
{
    while (QTcpSocket *client = m_server.nextPendingConnection()) {
        if (m_tunnels >= mostTunnels) {
            client->deleteLater();
            continue;
        }
        auto *tunnel = new Tunnel(
            client, m_proxy, [this] { m_rejected = true; }, this);
        ++m_tunnels;
        connect(tunnel, &QObject::destroyed, this, [this] { --m_tunnels; });
    }
}
