// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What is said to a SOLVA broker and to its client program, without a socket.
namespace SolvaProtocol {

constexpr quint16 defaultPort = 8443;
inline const QString requestPath = QStringLiteral("/_mpcdesktops?version=v3");

/// No broker names more desktops, nor longer ones, than a user can look through.
constexpr int desktopLimit = 100000;
constexpr int nameLimit = 1024;

/// All that the broker's client program is told.
struct Session
{
    QString address; ///< of the broker, as it was typed
    QString protocol = QStringLiteral("ZMP");
    QString desktop;
    QString user;
    QString password;
    QString experience;
    QString keyboardLayout;
    QString application;
    QString applicationDir;
    bool dualDisplay = false;
    QString dualDisplayPosition;
};

/// The address with scheme and port. One that holds "://" stays as it is, whatever its scheme; one that holds
/// a colon has its port.
QString completedAddress(const QString &address);

/// "user@domain", unless the domain is empty or the user names one himself.
QString userWithDomain(const QString &user, const QString &domain);

/// Where the list of desktops is asked for, with the credentials as the URL's user information.
QUrl requestUrl(const QString &address, const QString &user, const QString &password);

/// The broker's host alone.
QString host(const QString &address);

struct Credentials
{
    QString user;
    QString password;
};

/// What Qt's basic authentication has to be given for the credentials to reach the broker: it sends one byte
/// a character. Those that bytes cannot hold so are sent as UTF-8.
Credentials basicCredentials(const QString &user, const QString &password);

/// The desktops of a reply, in its order. Lines that name none are passed over.
QStringList desktopNames(const QByteArray &body);

QStringList connectionArguments(const Session &session);

} // namespace SolvaProtocol
