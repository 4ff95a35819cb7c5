// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "solva/brokerquery.h"

#include <QUrl>

#include <algorithm>

namespace {

EndReason reasonOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return EndReason::NameNotFound;
    case QNetworkReply::AuthenticationRequiredError:
        return EndReason::LogonRejected;
    case QNetworkReply::ContentAccessDenied:
        return EndReason::NotAllowed;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // by the transfer timeout
    case QNetworkReply::UnknownNetworkError:
        return EndReason::Unreachable;
    default:
        return EndReason::ServerFault;
    }
}

/// Brokers expect Latin-1. Text that does not fit is sent as UTF-8.
QByteArray basicCredentials(const QString &user, const QString &password)
{
    const QString pair = user + QLatin1Char(':') + password;
    const bool fits = std::all_of(pair.begin(), pair.end(), [](QChar c) { return c.unicode() < 0x100; });
    return "Basic " + (fits ? pair.toLatin1() : pair.toUtf8()).toBase64();
}

} // namespace

BrokerQuery::BrokerQuery(QObject *parent)
    : QObject(parent)
{ }

BrokerQuery::~BrokerQuery()
{
    if (m_reply)
        m_reply->disconnect(this);
}

void BrokerQuery::start(const QString &server, const QString &user, const QString &password)
{
    QUrl url(QStringLiteral("https://%1/_mpcdesktops?version=v3").arg(server));
    if (url.port() < 0)
        url.setPort(defaultPort);
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", basicCredentials(user, password));
    request.setTransferTimeout(transferTimeoutMs);
    m_reply = m_manager.get(request);
    // Brokers use self-signed certificates, and the device has no administrator who could confirm one.
    connect(m_reply, &QNetworkReply::sslErrors, m_reply, [this] { m_reply->ignoreSslErrors(); });
    connect(m_reply, &QNetworkReply::readyRead, this, &BrokerQuery::readAvailable);
    connect(m_reply, &QNetworkReply::finished, this, &BrokerQuery::handleFinished);
}

void BrokerQuery::readAvailable()
{
    m_list += m_reply->readAll().left(longestList - m_list.size());
}

void BrokerQuery::handleFinished()
{
    readAvailable();
    if (m_reply->error() == QNetworkReply::NoError)
        emit succeeded(parse(m_list));
    else
        emit failed(
            {reasonOf(m_reply->error()), QStringLiteral("broker: %1").arg(m_reply->errorString()), {}});
}

QVector<OfferedDesktop> BrokerQuery::parse(const QByteArray &list)
{
    QVector<OfferedDesktop> desktops;
    const QList<QByteArray> lines = list.split('\n');
    for (const QByteArray &line : lines) {
        OfferedDesktop desktop;
        const QStringList fields = QString::fromUtf8(line).trimmed().split(QLatin1Char('|'));
        for (const QString &field : fields) {
            const QString value = field.section(QLatin1Char(':'), 1);
            if (field.startsWith(QLatin1String("name:")))
                desktop.name = value;
            else if (field.startsWith(QLatin1String("address:")))
                desktop.address = value;
        }
        if (!desktop.name.isEmpty())
            desktops.append(desktop);
    }
    return desktops;
}
