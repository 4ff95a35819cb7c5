// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "lab-peers/httppeer.h"

#include <QUrl>
#include <QVector>

#include <optional>

/// A desktop that a broker offers, and its address.
struct BrokerDesktop
{
    QString name;
    QString address;
};

/// A SOLVA connection broker. It checks the user's name and password and replies with the user's desktops,
/// one per line:
///
///     name:NAME|address:ADDRESS|protocol:RDP
class BrokerServer : public HttpPeer
{
    Q_OBJECT

public:
    enum class Mode {
        Normal,
        Slow,       ///< waits before each reply, see setDelay()
        Error,      ///< replies with status 500
        Cut,        ///< closes the connection in the middle of a reply
        Huge,       ///< offers 10,000 desktops
        Empty,      ///< replies with an empty body
        NoLineEnds, ///< omits the line ends
        Redirect    ///< redirects the client, see setRedirect()
    };
    Q_ENUM(Mode)
    static constexpr int hugeList = 10000;
    static constexpr quint16 defaultPort = 8443;

    explicit BrokerServer(QObject *parent = nullptr);

    /// Returns the mode of a word: "normal", "slow", "500", "cut", "huge", "empty" or "no-line-ends".
    static std::optional<Mode> modeOf(const QString &word);

    void addUser(const QString &name, const QString &password, const QVector<BrokerDesktop> &desktops);
    void setMode(Mode mode) { m_mode = mode; }
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    void setRedirect(const QUrl &target) { m_redirect = target; }
    /// Sets a reply body that replaces the list.
    void setBody(const QByteArray &body) { m_body = body; }

protected:
    int respond(QTcpSocket *socket, const HttpRequest &request) override;
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
