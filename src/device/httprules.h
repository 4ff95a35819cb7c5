// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/httpmessage.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

/// What HTTP requests and replies mean. Needs no socket.
namespace Http {

/// Empty for an operation that has no verb of its own.
QByteArray verb(QNetworkAccessManager::Operation operation);
bool isEncrypted(const QUrl &url);
/// Whether the URL names an HTTP or HTTPS server.
bool isWeb(const QUrl &url);
int portOf(const QUrl &url);
bool isSameOrigin(const QUrl &one, const QUrl &other);
/// The value of an "Authorization" header.
QByteArray basic(const QString &user, const QString &password);
bool isBasicOffered(const HttpHead &head);
QNetworkReply::NetworkError errorOf(int status);
QNetworkReply::NetworkError errorOf(QAbstractSocket::SocketError error);

} // namespace Http
