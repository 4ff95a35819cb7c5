// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QString>

/// The messages for the devices of a QMD server, and the requests of the devices, in one folder:
///
///     mode                   a word of QmdServer::modeOf; read at each request
///     SERIAL/log             the device's requests, one per line
///     SERIAL/KIND/NUMBER     messages for the device, oldest first; "-" is an empty serial number
class QmdSpool
{
public:
    /// "actions": lists for the next check-in or heartbeat. "configuration", "profile": the document for the
    /// next fetch. "body": the whole reply to the next request.
    static const QStringList &kinds();

    explicit QmdSpool(const QString &folder);

    bool add(const QString &serial, const QString &kind, const QByteArray &text) const;
    /// Removes and returns the oldest message; null when there is none.
    QByteArray take(const QString &serial, const QString &kind) const;
    /// Removes and returns all actions.
    QJsonArray takeActions(const QString &serial) const;
    void record(const QString &serial, const QByteArray &line) const;
    QString mode() const;
    bool setMode(const QString &word) const;

private:
    QString folderOf(const QString &serial) const;
    QString waiting(const QString &serial, const QString &kind) const;

    QString m_folder;
};
