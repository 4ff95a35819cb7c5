// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/httpaccess.h"

#include "device/httpreply.h"
#include "lab-peers/tlsserver.h"
#include "testdevice.h"
#include "testtable.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

#include <memory>

namespace {

const QByteArray ok = "HTTP/1.1 200 OK\r\n";

/// Sends a reply to each request, and then the same bytes again for as long as the client takes them.
class Server : public TlsServer
{
public:
    Server(const QByteArray &reply, const QByteArray &endless, bool encrypted = false)
        : m_reply(reply)
        , m_endless(endless)
    {
        setEncrypted(encrypted);
        if (!start(QHostAddress::LocalHost, 0))
            qFatal("no server: %s", qPrintable(fault()));
    }
    QUrl url(const char *scheme = "http") const
    {
        return QUrl(QString("%1://127.0.0.1:%2/a?b").arg(scheme).arg(serverPort()));
    }
    QByteArray received;
    qint64 sent = 0;

protected:
    void receive(QTcpSocket *socket) override
    {
        received += socket->readAll();
        socket->write(m_reply);
        if (m_endless.isEmpty())
            return socket->disconnectFromHost();
        const auto more = [this, socket] {
            for (int i = 0; i < 100 && socket->bytesToWrite() < 100000; ++i)
                sent += socket->write(m_endless);
        };
        connect(socket, &QTcpSocket::bytesWritten, socket, more);
        more();
    }

private:
    QByteArray m_reply;
    QByteArray m_endless;
};

QByteArray chunked(const QByteArray &chunks)
{
    return ok + "Transfer-Encoding: chunked\r\n\r\n" + chunks;
}
} // namespace

/// What a server on the loopback interface may send, and what arrives of it.
class HttpAccessTest : public QObject
{
    Q_OBJECT

private slots:
    void readsAReply_data()
    {
        using Error = QNetworkReply::NetworkError;
        const TestTable<QByteArray, Error, QByteArray> table("reply", "error", "body");
        const Error none = QNetworkReply::NoError, protocol = QNetworkReply::ProtocolFailure,
                    closed = QNetworkReply::RemoteHostClosedError;
        table.row("by length", ok + "Content-Length: 3\r\n\r\nabcdef", none, "abc");
        table.row("until the end", ok + "\r\nabc", none, "abc");
        table.row("after others", "HTTP/1.1 100 Go on\r\n\r\n" + ok + "\r\na", none, "a");
        table.row("without a body", "HTTP/1.1 204 None\r\nContent-Length: 9\r\n\r\n", none, "");
        table.row("chunks", chunked("3;x=y\r\nabc\r\nA\r\n0123456789\r\n0\r\nEnd: 1\r\n\r\n"), none,
                  "abc0123456789");
        table.row("chunks cut off", chunked("3\r\nabc\r\n"), closed, "abc");
        table.row("a chunk of no size", chunked("-1\r\nabc\r\n0\r\n\r\n"), protocol, "");
        table.row("a chunk of any size", chunked("FFFFFFFFFFFFFFFFF\r\nabc"), protocol, "");
        table.row("a chunk too long", chunked("1\r\nabc\r\n0\r\n\r\n"), protocol, "a");
        table.row("two lengths", ok + "Content-Length: 1\r\nContent-Length: 2\r\n\r\nab", protocol, "");
        table.row("no length", ok + "Content-Length: -1\r\n\r\nab", protocol, "");
        table.row("an unknown coding", ok + "Transfer-Encoding: gzip\r\n\r\nab", protocol, "");
        table.row("half a head", ok, closed, "");
        table.row("not HTTP", "SSH-2.0-x\r\n\r\n", protocol, "");
        table.row("nothing", "", closed, "");
        table.row("too many lines", ok + QByteArray("A: b\r\n").repeated(300) + "\r\n", protocol, "");
    }

    void readsAReply()
    {
        QFETCH(const QByteArray, reply);
        QFETCH(const QByteArray, body);
        Server server(reply, {});
        const auto answer = get(server.url());
        QTEST(answer->error(), "error");
        QCOMPARE(answer->readAll(), body);
        QVERIFY(server.received.startsWith("GET /a?b HTTP/1.1\r\nHost: 127.0.0.1:"));
    }

    /// The server sends for ever: the reply ends all the same, or waits for its reader.
    void boundsWhatAServerSends_data()
    {
        const TestTable<QByteArray, QByteArray, bool> table("start", "endless", "ends");
        table.row("headers", ok, "A: b\r\n", true);
        table.row("one header", ok + "A: ", "b", true);
        table.row("heads", "", "HTTP/1.1 100 Go on\r\n\r\n", true);
        table.row("a challenge", "HTTP/1.1 401 Who\r\nWWW-Authenticate: Basic realm=\"x\"\r\n\r\n", "body",
                  true);
        table.row("an error", "HTTP/1.1 500 Sorry\r\n\r\n", "body", true);
        table.row("a line between chunks", chunked("1;"), "x", true);
        table.row("trailers", chunked("0\r\n"), "A: b\r\n", true);
        table.row("a body", ok + "\r\n", QByteArray(10000, 'x'), false);
    }

    void boundsWhatAServerSends()
    {
        QFETCH(const QByteArray, start);
        QFETCH(const QByteArray, endless);
        QFETCH(const bool, ends);
        Server server(start, endless);
        const int limit = 100000;
        const auto answer = get(server.url(), limit, ends);
        QCOMPARE(answer->isFinished(), ends);
        QVERIFY(answer->bytesAvailable() <= limit);
        if (!ends) {
            QTRY_COMPARE(answer->bytesAvailable(), limit);
            answer->readAll();
            QTRY_COMPARE(answer->bytesAvailable(), limit);
        }
    }

    void keepsNoCookies()
    {
        Server server(ok + "Set-Cookie: name=value\r\nContent-Length: 0\r\n\r\n", {});
        get(server.url());
        get(server.url());
        QCOMPARE(server.received.count("GET "), 2);
        QVERIFY(!server.received.toLower().contains("cookie"));
    }

    /// A certificate counts from the moment when it is in the store, and no longer than that.
    void trustsTheStore()
    {
        Server server(ok + "\r\n", {}, true);
        QList<QSslError> errors;
        QSslCertificate certificate;
        connect(&m_access, &QNetworkAccessManager::sslErrors, this,
                [&](QNetworkReply *reply, const QList<QSslError> &found) {
                    errors = found;
                    certificate = reply->sslConfiguration().peerCertificate();
                    reply->ignoreSslErrors();
                });
        const auto trusted = [&] {
            const auto answer = get(server.url("https"));
            bool known = answer->error() == QNetworkReply::NoError && !errors.isEmpty();
            for (const QSslError &error : qAsConst(errors))
                known = known && error.error() == QSslError::HostNameMismatch;
            return known;
        };
        const QString file = "/var/lib/kt964/certificates/cacerts/lab.pem";
        QVERIFY(!trusted());
        QVERIFY(!certificate.isNull());
        m_device.write(file, certificate.toPem());
        QVERIFY(trusted());
        QVERIFY(QFile::remove(m_device.path(file)));
        QVERIFY(!trusted());
        m_access.disconnect(this);
        QCOMPARE(get(server.url("https"))->error(), QNetworkReply::SslHandshakeFailedError);
    }

private:
    std::unique_ptr<QNetworkReply> get(const QUrl &url, qint64 bufferSize = 0, bool ends = true)
    {
        std::unique_ptr<QNetworkReply> reply(m_access.get(QNetworkRequest(url)));
        reply->setReadBufferSize(bufferSize);
        QSignalSpy end(reply.get(), ends ? &QNetworkReply::finished : &QNetworkReply::readyRead);
        end.wait(TestGroup::waitMs());
        return reply;
    }

    TestDevice m_device;
    HttpAccess m_access;
};

QTEST_GUILESS_MAIN(HttpAccessTest)
#include "httpaccesstest.moc"
