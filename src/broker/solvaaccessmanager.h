// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "broker/solvaprotocol.h"
#include "models/item.h"

#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QAuthenticator;
class QSslError;

/// Logs a user on to a SOLVA connection broker, holds the desktops that it offers him, and says how the
/// broker's client program is to be called for one of them.
///
/// One log-on at a time: a new one ends the one under way, of which nothing more is heard. Every log-on has
/// one outcome, told by `sendReply`, unless it is abandoned.
///
/// Some of what it prints holds the password. These lines go to standard output alone, never through the
/// logger.
class SolvaAccessManager : public QObject
{
    Q_OBJECT

public:
    /// How long a broker may take for its whole reply.
    static constexpr int replyTimeMs = 30000;
    /// A list of desktops is text of some kilobytes; a reply that exceeds this is not one.
    static constexpr int bodyLimit = 8 * 1024 * 1024;
    /// What `sendReply` says after a success, and when the broker does not accept the credentials.
    static inline const QString noError = QStringLiteral("NO_ERROR");
    static inline const QString credentialsRefused = QStringLiteral("Host requires authentication");

    explicit SolvaAccessManager(QObject *parent = nullptr);
    ~SolvaAccessManager() override;

    /// Asks the broker for the desktops of a user. The domain, unless empty, is added to a user's name that
    /// has none.
    void getSolvaServers(const QString &address, const QString &user, const QString &password,
                         const QString &domain);
    /// Ends the log-on under way, of which nothing more is heard.
    void abandon();
    /// Fills the list of desktops from a reply's body.
    void parseServers(const QByteArray &body);
    /// The arguments for "solva-client".
    QStringList getConnectionArguments() const;

    /// The desktops, a row each with its name in column 0. They stay ours and live until the next success:
    /// whoever keeps one, such as a model, takes a copy, `new Item(*desktop)`.
    const QList<Item *> &getDesktops() const { return m_desktops; }
    bool isBusy() const { return m_reply != nullptr; }

    /// The broker's address as given, and the user's name with the domain that was added.
    QString getAddress() const { return m_session.address; }
    void setAddress(const QString &address) { m_session.address = address; }
    QString getUser() const { return m_session.user; }
    void setUser(const QString &user) { m_session.user = user; }
    QString getPassword() const { return m_session.password; }
    void setPassword(const QString &password) { m_session.password = password; }

    QString getDesktop() const { return m_session.desktop; }
    void setDesktop(const QString &desktop) { m_session.desktop = desktop; }
    /// Whether the desktop is to be started as soon as the list is there.
    bool getAutoconnect() const { return m_autoconnect; }
    void setAutoconnect(bool autoconnect) { m_autoconnect = autoconnect; }
    QString getProtocol() const { return m_session.protocol; }
    void setProtocol(const QString &protocol) { m_session.protocol = protocol; }
    QString getExperience() const { return m_session.experience; }
    void setExperience(const QString &experience) { m_session.experience = experience; }
    QString getKeyboardLayout() const { return m_session.keyboardLayout; }
    void setKeyboardLayout(const QString &layout) { m_session.keyboardLayout = layout; }
    QString getAppAutostart() const { return m_session.application; }
    void setAppAutostart(const QString &application) { m_session.application = application; }
    QString getAppAutostartDir() const { return m_session.applicationDir; }
    void setAppAutostartDir(const QString &directory) { m_session.applicationDir = directory; }
    bool getDualDisplayConnection() const { return m_session.dualDisplay; }
    void setDualDisplayConnection(bool inUse) { m_session.dualDisplay = inUse; }
    QString getDualDisplayPosition() const { return m_session.dualDisplayPosition; }
    void setDualDisplayPosition(const QString &position) { m_session.dualDisplayPosition = position; }

    /// For tests that have no half minute to spare.
    void setReplyTime(int milliseconds) { m_replyTimer.setInterval(milliseconds); }

public slots:
    void replyFinished(QNetworkReply *reply);
    /// The broker asks for other credentials than the user's: there are none.
    void authenticationRequiredSlot(QNetworkReply *reply, QAuthenticator *authenticator);
    /// A broker signs its own certificate: every fault of it is passed over.
    void sslErrorsSlot(QNetworkReply *reply, const QList<QSslError> &errors);

signals:
    /// `noError`, or what went wrong.
    void sendReply(const QString &reply);

private:
    void answerChallenge(QNetworkReply *reply, QAuthenticator *authenticator);
    void checkSize();
    void breakOff(const QString &reason);

    QNetworkAccessManager m_manager;
    QPointer<QNetworkReply> m_reply; ///< the one that is awaited
    QTimer m_replyTimer;
    bool m_credentialsGiven = false;
    SolvaProtocol::Session m_session;
    bool m_autoconnect = true;
    QList<Item *> m_desktops;
};
