// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/httpaccess.h"
#include "management/messagedispatcher.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>

/// Sends requests to a server and passes the bodies of its replies to the dispatcher.
///
/// Every reply is released, whatever its outcome. Replies with an error are dropped silently, and so are late
/// and overlong ones. Redirections are not followed. Certificate errors are ignored.
class RestClient : public QObject
{
    Q_OBJECT

public:
    /// A configuration has some kilobytes of text; longer replies are dropped.
    static constexpr qint64 bodyLimit = 8 * 1024 * 1024;
    /// The time limit for a server's whole reply.
    static constexpr int replyTimeMs = 120000;

    /// Makes the process trust the device's CA certificates, see `TlsTrust`.
    explicit RestClient(QObject *parent = nullptr);
    ~RestClient() override;

    /// Each returns at once. This object owns the reply, which is null if the URL is not HTTP or HTTPS.
    QNetworkReply *POST(const QUrl &url, const QByteArray &body);
    QNetworkReply *PUT(const QUrl &url, const QByteArray &body);
    QNetworkReply *GET(const QUrl &url);
    QNetworkReply *HEAD(const QUrl &url);
    QNetworkReply *DELETE(const QUrl &url);

    /// Whether requests can be sent to a URL.
    static bool isSupported(const QUrl &url);
    MessageDispatcher &dispatcher();
    /// For tests: shortens the time limit of a reply.
    void setReplyTime(int milliseconds);

public slots:
    void onFinished(QNetworkReply *reply);
    void onSslError(QNetworkReply *reply, const QList<QSslError> &errors);

signals:
    /// The body of a reply, and whether it may contain a configuration.
    void restResponse(const QByteArray &body, bool isConfiguration);

protected:
    QNetworkAccessManager &manager();

private:
    template <typename Send>
    QNetworkReply *send(const QUrl &url, Send request);

    MessageDispatcher m_dispatcher;
    HttpAccess m_manager;
    QNetworkRequest m_request; ///< the template of every request
    int m_replyTime = replyTimeMs;
};
