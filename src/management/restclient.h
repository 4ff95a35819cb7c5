// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "management/messagedispatcher.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>

/// Sends requests to a server and hands the bodies of its answers to the dispatcher.
///
/// Whatever comes of a request, its reply is released. Answers with an error are dropped without a word, and
/// so is one that does not end in time, or that is longer than any message. Redirections are not followed.
/// Faults of a server's certificate are passed over.
class RestClient : public QObject
{
    Q_OBJECT

public:
    /// A configuration is text of some kilobytes; an answer that exceeds this is none.
    static constexpr qint64 bodyLimit = 8 * 1024 * 1024;
    /// How long a server may take for its whole answer.
    static constexpr int replyTimeMs = 120000;

    /// Makes the device's CA certificates those that every TLS connection of the process trusts.
    explicit RestClient(QObject *parent = nullptr);
    ~RestClient() override;

    /// Each returns at once. The reply is ours; there is none for a URL that is not of HTTP or HTTPS.
    QNetworkReply *POST(const QUrl &url, const QByteArray &body);
    QNetworkReply *PUT(const QUrl &url, const QByteArray &body);
    QNetworkReply *GET(const QUrl &url);
    QNetworkReply *HEAD(const QUrl &url);
    QNetworkReply *DELETE(const QUrl &url);

    /// Whether requests can go to a URL.
    static bool canReach(const QUrl &url);
    MessageDispatcher &dispatcher();
    void setReplyTime(int milliseconds);

public slots:
    void onFinished(QNetworkReply *reply);
    void onSslError(QNetworkReply *reply, const QList<QSslError> &errors);

signals:
    /// The body of an answer, and whether it may hold a configuration.
    void restResponse(const QByteArray &body, bool isConfiguration);

protected:
    QNetworkAccessManager &manager();

private:
    template <typename Send>
    QNetworkReply *send(const QUrl &url, Send request);

    MessageDispatcher m_dispatcher;
    QNetworkAccessManager m_manager;
    QNetworkRequest m_request; ///< every request is made from it
    int m_replyTime = replyTimeMs;
};
