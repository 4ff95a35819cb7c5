// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/httppeer.h"

#include <QUrl>
#include <QVector>

// A desktop that a broker hands out, and where it is.
struct BrokerDesktop
{
    QString name;
    QString address;
};

// A SOLVA connection broker: it asks for a user's name and password and answers with his desktops, a line
// each:
//
//     name:NAME|address:ADDRESS|protocol:RDP
class BrokerServer : public HttpPeer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,       // waits before each reply, see setDelay()
        Error,      // answers 500
        Cut,        // closes the connection in the middle of a reply
        Huge,       // adds desktops until there are 10,000
        Empty,      // an empty body
        NoLineEnds, // the desktops, with nothing between them
        Redirect    // sends the client elsewhere, see setRedirect()
    };
    Q_ENUM(Mode)
    static constexpr int hugeList = 10000;
    static constexpr quint16 defaultPort = 8443;

    explicit BrokerServer(QObject *parent = nullptr);

    // The mode of a word ("normal", "slow", "500", "cut", "huge", "empty", "no-line-ends"); false for others.
    static bool modeOf(const QString &word, Mode *mode);

    void addUser(const QString &name, const QString &password, const QVector<BrokerDesktop> &desktops);
    void setMode(Mode mode) { m_mode = mode; }
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    void setRedirect(const QUrl &target) { m_redirect = target; }
    // Sent to whoever has logged on, in the place of the list.
    void setBody(const QByteArray &body) { m_body = body; }

protected:
    int answer(QTcpSocket *socket, const HttpRequest &request) override;
    int replyDelay() const override { return m_mode == Mode::Slow ? m_delay : 0; }

private:
    struct User
    {
        QString name;
        QString password;
        QVector<BrokerDesktop> desktops;
    };

    int status(const HttpRequest &request, const User *user) const;
    const User *userOf(const HttpRequest &request) const;
    QByteArray list(const User &user) const;
    void send(QTcpSocket *socket, int status, const QByteArray &body) const;

    QVector<User> m_users;
    Mode m_mode = Mode::Normal;
    int m_delay = 5000;
    QUrl m_redirect;
    QByteArray m_body;
};
