// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

/// Builds requests to a SOLVA broker and the command line of its client program, and reads replies. Needs no
/// socket.
namespace SolvaProtocol {

constexpr quint16 defaultPort = 8443;
inline const QString requestPath = QStringLiteral("/_mpcdesktops?version=v3");

/// Limits on the number of desktops and on the length of their names, far above any real broker's.
constexpr int desktopLimit = 100000;
constexpr int nameLimit = 1024;

/// The parameters of the broker's client program.
struct Session
{
    QString address; ///< of the broker, as typed
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

/// The address with scheme and port. An address with "://" stays unchanged; another one with a colon already
/// has a port.
QString completedAddress(const QString &address);

/// "user@domain", unless the domain is empty or the user name contains one.
QString userWithDomain(const QString &user, const QString &domain);

/// The URL of the list of desktops, with the credentials as user information.
QUrl requestUrl(const QString &address, const QString &user, const QString &password);

/// The broker's host without scheme and port.
QString host(const QString &address);

struct Credentials
{
    QString user;
    QString password;
};

/// The credentials for Qt's basic authentication, which sends each character as one byte. Credentials beyond
/// Latin-1 are sent as UTF-8.
Credentials basicCredentials(const QString &user, const QString &password);

/// The desktops of a reply, in its order. Lines without a desktop are skipped.
QStringList desktopNames(const QByteArray &body);

QStringList connectionArguments(const Session &session);

} // namespace SolvaProtocol
