// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/restclient.h"

#include "device/tlstrust.h"

#include <QLoggingCategory>
#include <QSslError>
#include <QTimer>

Q_LOGGING_CATEGORY(lcRest, "kt.management.rest")

RestClient::RestClient(QObject *parent)
    : QObject(parent)
{
    TlsTrust::refresh();
    connect(&m_manager, &QNetworkAccessManager::sslErrors, this, &RestClient::onSslError);
    connect(&m_manager, &QNetworkAccessManager::finished, this, &RestClient::onFinished);
    connect(this, &RestClient::restResponse, &m_dispatcher, &MessageDispatcher::dispatch);
    m_request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    // A compressed reply could expand beyond the limit.
    m_request.setRawHeader("Accept-Encoding", "identity");
}

RestClient::~RestClient()
{
    m_manager.disconnect(this);
}

bool RestClient::isSupported(const QUrl &url)
{
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return web && !url.host().isEmpty();
}

MessageDispatcher &RestClient::dispatcher()
{
    return m_dispatcher;
}

void RestClient::setReplyTime(int milliseconds)
{
    m_replyTime = milliseconds;
}

QNetworkAccessManager &RestClient::manager()
{
    return m_manager;
}

QNetworkReply *RestClient::POST(const QUrl &url, const QByteArray &body)
{
    return send(url, [&] { return m_manager.post(m_request, body); });
}

QNetworkReply *RestClient::PUT(const QUrl &url, const QByteArray &body)
{
    return send(url, [&] { return m_manager.put(m_request, body); });
}

QNetworkReply *RestClient::GET(const QUrl &url)
{
    return send(url, [this] { return m_manager.get(m_request); });
}

QNetworkReply *RestClient::HEAD(const QUrl &url)
{
    return send(url, [this] { return m_manager.head(m_request); });
}

QNetworkReply *RestClient::DELETE(const QUrl &url)
{
    return send(url, [this] { return m_manager.deleteResource(m_request); });
}

template <typename Send>
QNetworkReply *RestClient::send(const QUrl &url, Send request)
{
    if (!isSupported(url))
        return nullptr;
    m_request.setUrl(url);
    QNetworkReply *reply = request();
    reply->setReadBufferSize(bodyLimit + 1);
    // Queued: a reply must not be aborted inside its own signal.
    connect(
        reply, &QNetworkReply::readyRead, reply,
        [reply] {
            if (reply->bytesAvailable() <= bodyLimit || reply->isFinished())
                return;
            qCWarning(lcRest).noquote() << "reply dropped: too long:" << reply->url().path();
            reply->abort();
        },
        Qt::QueuedConnection);
    // For the whole reply: a transfer timeout would only end a reply that falls silent. The timer is the
    // reply's, so that it does not outlive it.
    auto *limit = new QTimer(reply);
    limit->setSingleShot(true);
    connect(limit, &QTimer::timeout, reply, &QNetworkReply::abort);
    limit->start(m_replyTime);
    return reply;
}

void RestClient::onFinished(QNetworkReply *reply)
{
    // Requests repeat for months, so none may leak.
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError)
        return;
    const QByteArray body = reply->read(bodyLimit + 1);
    if (body.size() > bodyLimit) {
        qCWarning(lcRest).noquote() << "reply dropped: too long:" << reply->url().path();
        return;
    }
    const QString url = reply->url().toString();
    emit restResponse(body,
                      url.contains(QLatin1String("configuration"))
                          || url.contains(QLatin1String("profileConfiguration")));
}

void RestClient::onSslError(QNetworkReply *reply, const QList<QSslError> &errors)
{
    reply->ignoreSslErrors(errors);
    for (const QSslError &error : errors)
        qCDebug(lcRest) << error.errorString();
}
