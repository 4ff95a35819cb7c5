// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "broker/solvaaccessmanager.h"

#include <QAuthenticator>
#include <QNetworkRequest>
#include <QSslError>

#include <cstdio>

SolvaAccessManager::SolvaAccessManager(QObject *parent)
    : QObject(parent)
{
    connect(&m_manager, &QNetworkAccessManager::finished, this, &SolvaAccessManager::replyFinished);
    connect(&m_manager, &QNetworkAccessManager::authenticationRequired, this,
            &SolvaAccessManager::answerChallenge);
    connect(&m_manager, &QNetworkAccessManager::sslErrors, this, &SolvaAccessManager::sslErrorsSlot);
    m_replyTimer.setSingleShot(true);
    m_replyTimer.setInterval(replyTimeMs);
    connect(&m_replyTimer, &QTimer::timeout, this, [this] { breakOff(tr("The broker does not answer.")); });
}

SolvaAccessManager::~SolvaAccessManager()
{
    m_manager.disconnect(this);
    qDeleteAll(m_desktops);
}

void SolvaAccessManager::getSolvaServers(const QString &address, const QString &user, const QString &password,
                                         const QString &domain)
{
    abandonReply();
    m_session.address = address;
    m_session.user = SolvaProtocol::userWithDomain(user, domain);
    m_session.password = password;
    m_brokenOff.clear();
    m_credentialsGiven = false;
    m_manager.clearAccessCache();

    const QUrl url = SolvaProtocol::requestUrl(address, m_session.user, password);
    std::printf("[%s]   [%s]   [%s]\n", qUtf8Printable(url.toString()), qUtf8Printable(m_session.user),
                qUtf8Printable(password));
    std::fflush(stdout);
    // The user information is handed over in answerChallenge: left in the URL it would turn up in error
    // texts, and not every character of a password would reach the broker.
    QNetworkRequest request(url.adjusted(QUrl::RemoveUserInfo));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    m_reply = m_manager.get(request);
    m_reply->setReadBufferSize(bodyLimit + 1);
    connect(m_reply, &QNetworkReply::readyRead, this, &SolvaAccessManager::checkSize);
    m_replyTimer.start();
}

void SolvaAccessManager::replyFinished(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply != m_reply)
        return;
    m_reply.clear();
    m_replyTimer.stop();
    const QString error = errorText(*reply);
    std::printf("HTTP Error: %s\n", qUtf8Printable(error));
    std::fflush(stdout);
    if (reply->error() != QNetworkReply::NoError) {
        emit sendReply(error);
        return;
    }
    std::puts("NO ERROR Error");
    parseServers(reply->read(bodyLimit));
    emit sendReply(noError);
}

/// The first challenge is answered with the credentials of the request; the broker has no use for them when
/// it asks again.
void SolvaAccessManager::answerChallenge(QNetworkReply *reply, QAuthenticator *authenticator)
{
    if (reply != m_reply || m_credentialsGiven || m_session.user.isEmpty()) {
        authenticationRequiredSlot(reply, authenticator);
        return;
    }
    m_credentialsGiven = true;
    authenticator->setUser(SolvaProtocol::asBasicCredential(m_session.user));
    authenticator->setPassword(SolvaProtocol::asBasicCredential(m_session.password));
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

void SolvaAccessManager::abandonReply()
{
    const QPointer<QNetworkReply> abandoned = m_reply;
    m_reply.clear();
    if (abandoned)
        abandoned->abort();
}

void SolvaAccessManager::checkSize()
{
    if (m_reply && m_reply->bytesAvailable() > bodyLimit)
        breakOff(tr("The broker's reply is too long."));
}

void SolvaAccessManager::breakOff(const QString &reason)
{
    if (!m_reply)
        return;
    m_brokenOff = reason;
    m_reply->abort();
}

QString SolvaAccessManager::errorText(const QNetworkReply &reply) const
{
    if (reply.error() == QNetworkReply::AuthenticationRequiredError)
        return credentialsRefused;
    return m_brokenOff.isEmpty() ? reply.errorString() : m_brokenOff;
}
