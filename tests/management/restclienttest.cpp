// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/restclient.h"

#include "testdevice.h"
#include "testtable.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

/// What bounds a server: the length of a reply.
class RestClientTest : public QObject
{
    Q_OBJECT

private slots:
    void boundsAReply_data()
    {
        const TestTable<QByteArray, int, bool> table("status", "length", "accepted");
        const int limit = int(RestClient::bodyLimit);
        table.row("empty", "200 OK", 0, true);
        table.row("longest", "200 OK", limit, true);
        table.row("too long", "200 OK", limit + 1, false);
        table.row("far too long", "200 OK", 4 * limit, false);
        table.row("cut off", "200 OK", -100, false);
        table.row("an error", "500 Sorry", 2, false);
    }

    void boundsAReply()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const int, length);
        QFETCH(const bool, accepted);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        connect(&server, &QTcpServer::newConnection, &server, [&] {
            QTcpSocket *socket = server.nextPendingConnection();
            socket->write("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(qAbs(length))
                          + "\r\n\r\n" + QByteArray(qMax(0, length), ' '));
            if (length < 0)
                socket->disconnectFromHost();
        });
        const TestDevice device;
        RestClient client;
        const QSignalSpy responses(&client, &RestClient::restResponse);
        const QSignalSpy finished(client.GET(url(server)), &QNetworkReply::finished);
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(responses.size(), accepted ? 1 : 0);
        if (accepted)
            QCOMPARE(responses.first().first().toByteArray().size(), length);
    }

private:
    static QUrl url(const QTcpServer &server)
    {
        return QUrl(QString("http://127.0.0.1:%1/api/configuration").arg(server.serverPort()));
    }
};

QTEST_GUILESS_MAIN(RestClientTest)
#include "restclienttest.moc"
