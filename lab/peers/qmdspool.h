// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QString>

// What a QMD server is to tell its devices, and what they have sent, in one folder:
//
//     mode                   a word of QmdServer::modeOf; read at every request
//     SERIAL/log             what the device has sent, a line each
//     SERIAL/KIND/NUMBER     what waits for the device, the oldest first; "-" stands for an empty serial
class QmdSpool
{
public:
    // "actions": lists for the next check-in or heartbeat. "configuration", "profile": what the next fetch
    // gets. "body": the whole answer to the next request, whatever it is.
    static const QStringList &kinds();

    explicit QmdSpool(const QString &folder);

    bool add(const QString &serial, const QString &kind, const QByteArray &text) const;
    // The oldest that waits, which is removed; null when there is none.
    QByteArray take(const QString &serial, const QString &kind) const;
    // All actions that wait, which are removed.
    QJsonArray takeActions(const QString &serial) const;
    void record(const QString &serial, const QByteArray &line) const;
    QString mode() const;
    bool setMode(const QString &word) const;

private:
    QString folderOf(const QString &serial) const;
    QString waiting(const QString &serial, const QString &kind) const;

    QString m_folder;
};
