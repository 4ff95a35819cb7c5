// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QVector>

struct OfferedDesktop
{
    QString name;
    QString address;
};

/// Requests the desktops of a user from a broker.
class BrokerQuery : public QObject
{
    Q_OBJECT

public:
    static constexpr int transferTimeoutMs = 30000;
    static constexpr int longestList = 8 * 1024 * 1024; ///< the rest of a longer list is ignored
    static constexpr int defaultPort = 8443;

    explicit BrokerQuery(QObject *parent = nullptr);
    ~BrokerQuery() override;

    /// Sends the request; call it once per object.
    void start(const QString &server, const QString &user, const QString &password);

    /// Parses the broker's list: one desktop per line, with fields "name:NAME|address:ADDRESS|...".
    static QVector<OfferedDesktop> parse(const QByteArray &list);

signals:
    void succeeded(const QVector<OfferedDesktop> &desktops);
    void failed(const SessionEnd &end);

private:
    void readAvailable();
    void handleFinished();

    QNetworkAccessManager m_manager;
    QNetworkReply *m_reply = nullptr;
    QByteArray m_list;
};
