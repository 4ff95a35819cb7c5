// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QVector>

struct OfferedDesktop
{
    QString name;
    QString address;
};

// Asks a broker which desktops a user may have, and where they are.
class BrokerQuery : public QObject
{
    Q_OBJECT

public:
    static constexpr int ReplyTimeMs = 30000;
    static constexpr int LongestList = 8 * 1024 * 1024; // what a list has beyond is not read
    static constexpr int DefaultPort = 8443;

    explicit BrokerQuery(QObject *parent = nullptr);
    ~BrokerQuery() override;

    // Once per object.
    void ask(const QString &server, const QString &user, const QString &password);

    // A list as the broker sends it: lines of fields, "name:NAME|address:ADDRESS|...".
    static QVector<OfferedDesktop> parse(const QByteArray &list);

signals:
    void answered(const QVector<OfferedDesktop> &desktops);
    void failed(const SessionEnd &end);

private:
    void read();
    void finish();

    QNetworkAccessManager m_manager;
    QNetworkReply *m_reply = nullptr;
    QByteArray m_list;
    QTimer m_limit;
};
