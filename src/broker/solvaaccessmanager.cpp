// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaaccessmanager.h"

#include <QAuthenticator>
#include <QNetworkRequest>
#include <QSslError>

#include <cstdio>

namespace {

void printError(const QString &text)
{
    std::printf("HTTP Error: %s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

} // namespace

SolvaAccessManager::SolvaAccessManager(QObject *parent)
    : QObject(parent)
{
    connect(&m_manager, &QNetworkAccessManager::finished, this, &SolvaAccessManager::replyFinished);
    connect(&m_manager, &QNetworkAccessManager::authenticationRequired, this,
            &SolvaAccessManager::handleChallenge);
    connect(&m_manager, &QNetworkAccessManager::sslErrors, this, &SolvaAccessManager::sslErrorsSlot);
    m_replyTimer.setSingleShot(true);
    m_replyTimer.setInterval(replyTimeMs);
    connect(&m_replyTimer, &QTimer::timeout, this, [this] { fail(tr("The broker does not answer.")); });
}

SolvaAccessManager::~SolvaAccessManager()
{
    m_manager.disconnect(this);
    qDeleteAll(m_desktops);
}

void SolvaAccessManager::getSolvaServers(const QString &address, const QString &user, const QString &password,
                                         const QString &domain)
{
    delete m_reply.data(); // and with it the credentials
    m_session.address = address;
    m_session.user = SolvaProtocol::userWithDomain(user, domain);
    m_session.password = password;
    m_credentialsGiven = false;

    const QUrl url = SolvaProtocol::requestUrl(address, m_session.user, password);
    std::printf("[%s]   [%s]   [%s]\n", qUtf8Printable(url.toString()), qUtf8Printable(m_session.user),
                qUtf8Printable(password));
    std::fflush(stdout);
    // handleChallenge supplies the credentials. In the URL they would appear in error texts, and some
    // characters of a password would not reach the broker.
    QNetworkRequest request(url.adjusted(QUrl::RemoveUserInfo));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    m_reply = m_manager.get(request);
    m_reply->setReadBufferSize(bodyLimit + 1);
    connect(m_reply, &QNetworkReply::readyRead, this, &SolvaAccessManager::checkSize, Qt::QueuedConnection);
    m_replyTimer.start();
}

void SolvaAccessManager::abandon()
{
    m_replyTimer.stop();
    delete m_reply.data();
}

void SolvaAccessManager::replyFinished(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply != m_reply)
        return;
    m_reply.clear();
    m_replyTimer.stop();
    const bool refused = reply->error() == QNetworkReply::AuthenticationRequiredError;
    const QString error = refused ? credentialsRefused : reply->errorString();
    printError(error);
    if (reply->error() != QNetworkReply::NoError) {
        emit sendReply(error);
        return;
    }
    std::puts("NO ERROR Error");
    parseServers(reply->read(bodyLimit));
    emit sendReply(noError);
}

/// Answers only the first challenge: a second one means that the broker has rejected the credentials.
void SolvaAccessManager::handleChallenge(QNetworkReply *reply, QAuthenticator *authenticator)
{
    if (reply != m_reply || m_credentialsGiven || m_session.user.isEmpty()) {
        authenticationRequiredSlot(reply, authenticator);
        return;
    }
    m_credentialsGiven = true;
    const auto credentials = SolvaProtocol::basicCredentials(m_session.user, m_session.password);
    authenticator->setUser(credentials.user);
    authenticator->setPassword(credentials.password);
}

void SolvaAccessManager::authenticationRequiredSlot(QNetworkReply *reply, QAuthenticator *)
{
    std::printf(" Authenticator HTTP Error: %s\n", qUtf8Printable(reply->errorString()));
    std::fflush(stdout);
}

void SolvaAccessManager::sslErrorsSlot(QNetworkReply *reply, const QList<QSslError> &)
{
    std::puts("SSL ERRRO");
    std::fflush(stdout);
    reply->ignoreSslErrors();
}

void SolvaAccessManager::parseServers(const QByteArray &body)
{
    qDeleteAll(m_desktops);
    m_desktops.clear();
    const QStringList names = SolvaProtocol::desktopNames(body);
    for (const QString &name : names) {
        std::printf(" SOLVA %s\n", qUtf8Printable(name));
        m_desktops.append(new Item(name));
    }
    std::fflush(stdout);
}

QStringList SolvaAccessManager::getConnectionArguments() const
{
    std::printf("Server - %s\n", qUtf8Printable(SolvaProtocol::host(m_session.address)));
    std::fflush(stdout);
    return SolvaProtocol::connectionArguments(m_session);
}

void SolvaAccessManager::checkSize()
{
    if (m_reply && m_reply->bytesAvailable() > bodyLimit)
        fail(tr("The broker's reply is too long."));
}

/// Deletes the reply, so no signal of the reply may call this directly.
void SolvaAccessManager::fail(const QString &reason)
{
    abandon();
    printError(reason);
    emit sendReply(reason);
}
