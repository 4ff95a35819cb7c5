// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QHostAddress>
#include <QObject>
#include <QString>

class QTemporaryFile;

/// A Corvid server that a discovery has found, and the newest firmware that its index offers.
class UdpServer : public QObject
{
    Q_OBJECT

public:
    /// An index that is larger is none.
    static constexpr qint64 indexLimit = 4 * 1024 * 1024;

    UdpServer(const QHostAddress &address, const QString &name, QObject *parent = nullptr);
    explicit UdpServer(const QHostAddress &address, QObject *parent = nullptr);

    QHostAddress address() const;
    QString name() const;
    QString version() const;  ///< "0.0" until an index was read
    QString fileName() const; ///< of the firmware of that version

    /// Asks for the transfer of a file from this server. The text that names both to the user.
    QString startTransfer(const QString &file, bool reportProgress);
    /// 1 when this server's version is greater than another, or as long as they go alike and one is longer;
    /// 0 when they are equal; -1 when the other is greater.
    int compareVersion(const QString &other) const;
    /// Takes the newest firmware out of the server's index, a JSON document. One that does not parse offers
    /// none.
    void setRxUpdateJson(QTemporaryFile *index);

signals:
    void trigger_StartTransfer(const UdpFileRequest &request, bool reportProgress);

private:
    QHostAddress m_address;
    QString m_name;
    QString m_version = QStringLiteral("0.0");
    QString m_fileName;
};
