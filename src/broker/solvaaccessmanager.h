// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "broker/solvaprotocol.h"
#include "device/httpaccess.h"
#include "models/item.h"

#include <QList>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QAuthenticator;
class QSslError;

/// Logs a user on to a SOLVA connection broker, holds the list of the user's desktops, and builds the command
/// line of the broker's client program.
///
/// One log-on runs at a time; a new one silently cancels the running one. Every log-on that is not cancelled
/// emits `sendReply` once.
///
/// Lines that contain the password go to standard output only, never to the log.
class SolvaAccessManager : public QObject
{
    Q_OBJECT

public:
    /// The time limit for a broker's whole reply.
    static constexpr int replyTimeMs = 30000;
    /// A list of desktops has some kilobytes of text; longer replies are refused.
    static constexpr int bodyLimit = 8 * 1024 * 1024;
    /// The argument of `sendReply` after a success, and when the broker rejects the credentials.
    static inline const QString noError = QStringLiteral("NO_ERROR");
    static inline const QString credentialsRefused = QStringLiteral("Host requires authentication");

    explicit SolvaAccessManager(QObject *parent = nullptr);
    ~SolvaAccessManager() override;

    /// Requests the user's desktops from the broker. A domain is added to a user name without one.
    void getSolvaServers(const QString &address, const QString &user, const QString &password,
                         const QString &domain);
    /// Cancels the running log-on silently.
    void abandon();
    /// Fills the list of desktops from the body of a reply.
    void parseServers(const QByteArray &body);
    /// The arguments for "solva-client".
    QStringList getConnectionArguments() const;

    /// The desktops, one row each with the name in column 0. This object owns them until the next success; a
    /// model that keeps one copies it: `new Item(*desktop)`.
    const QList<Item *> &getDesktops() const { return m_desktops; }
    bool isBusy() const { return m_reply != nullptr; }

    /// The broker's address as given, and the user name with its domain.
    QString getAddress() const { return m_session.address; }
    void setAddress(const QString &address) { m_session.address = address; }
    QString getUser() const { return m_session.user; }
    void setUser(const QString &user) { m_session.user = user; }
    QString getPassword() const { return m_session.password; }
    void setPassword(const QString &password) { m_session.password = password; }

    QString getDesktop() const { return m_session.desktop; }
    void setDesktop(const QString &desktop) { m_session.desktop = desktop; }
    /// Whether the desktop starts as soon as the list arrives.
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

    /// For tests: shortens the time limit of a reply.
    void setReplyTime(int milliseconds) { m_replyTimer.setInterval(milliseconds); }

public slots:
    void replyFinished(QNetworkReply *reply);
    /// The broker requests other credentials; there are none.
    void authenticationRequiredSlot(QNetworkReply *reply, QAuthenticator *authenticator);
    /// Brokers use self-signed certificates, so all certificate errors are ignored.
    void sslErrorsSlot(QNetworkReply *reply, const QList<QSslError> &errors);

signals:
    /// `noError`, or the error text.
    void sendReply(const QString &reply);

private:
    void handleChallenge(QNetworkReply *reply, QAuthenticator *authenticator);
    void checkSize();
    void fail(const QString &reason);

    HttpAccess m_manager;
    QPointer<QNetworkReply> m_reply; ///< the reply of the running log-on
    QTimer m_replyTimer;
    bool m_credentialsGiven = false;
    SolvaProtocol::Session m_session;
    bool m_autoconnect = true;
    QList<Item *> m_desktops;
};
