// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/httpmessage.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QPointer>
#include <QSslConfiguration>

class HttpAccess;
class QSslSocket;

/// The reply to one HTTP request, over a connection of its own.
///
/// The network layer's own replies read a head of any length, handle its lines in quadratic time in the
/// thread that draws, and keep the body of a 401 reply without a limit. This class reads a head of at most
/// `headLimit` bytes, no body of a reply that is an error, a challenge or a redirection, and no more of a
/// body than `readBufferSize` holds. It offers credentials by basic authentication only.
class HttpReply : public QNetworkReply
{
    Q_OBJECT

public:
    static constexpr int headLimit = 64 * 1024;
    static constexpr int headLinesLimit = 250;
    /// The requests of one reply: challenges and redirections.
    static constexpr int requestsLimit = 20;

    HttpReply(HttpAccess &access, QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
              const QByteArray &body);
    ~HttpReply() override;

    static bool isSupported(QNetworkAccessManager::Operation operation, const QUrl &url);

    void abort() override;
    void close() override;
    void ignoreSslErrors() override;
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 longest) override;
    void ignoreSslErrorsImplementation(const QList<QSslError> &errors) override;
    void sslConfigurationImplementation(QSslConfiguration &configuration) const override;

private:
    enum class Stage { Connecting, Head, Body, Finished };

    void connectToServer();
    void watchSocket();
    QUrl origin() const;
    QByteArray target() const;
    void sendRequest();
    void receive();
    void receiveHead();
    void handleHead(const HttpHead &head);
    void handleChallenge(const HttpHead &head);
    void handleProxyChallenge();
    bool handleRedirection(const HttpHead &head);
    void startBody(const HttpHead &head);
    void receiveBody();
    void handleSocketError();
    void handleEndOfConnection();
    void reportProgress();
    void restart();
    void dropSocket();
    void fail(NetworkError error, const QString &text);
    void finish();

    HttpAccess &m_access;
    const QByteArray m_sent; ///< the body of the request
    const QSslConfiguration m_tls;
    Stage m_stage = Stage::Connecting;
    QPointer<QSslSocket> m_socket;
    bool m_closed = false; ///< by the server
    QNetworkProxy m_proxy;
    bool m_throughProxy = false; ///< the proxy reads the request
    QByteArray m_authorization;
    QByteArray m_proxyAuthorization;
    int m_requests = 0;
    int m_redirections = 0;
    QByteArrayList m_headLines;
    int m_headBytes = 0;
    HttpBody m_body;
    QByteArray m_buffer;
    int m_bufferStart = 0;
    qint64 m_received = 0;
    QElapsedTimer m_lastReport;
};
