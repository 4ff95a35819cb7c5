// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "update/udpfile.h"

#include <QHostAddress>
#include <QObject>
#include <QString>

class QTemporaryFile;

/// A Corvid server found by discovery, and the newest firmware in its index.
class UdpServer : public QObject
{
    Q_OBJECT

public:
    /// A larger index is ignored.
    static constexpr qint64 indexLimit = 4 * 1024 * 1024;

    UdpServer(const QHostAddress &address, const QString &name, QObject *parent = nullptr);
    explicit UdpServer(const QHostAddress &address, QObject *parent = nullptr);

    QHostAddress address() const;
    QString name() const;
    QString version() const;  ///< "0.0" until an index is read
    QString fileName() const; ///< the firmware file of that version

    /// Requests a file from this server. Returns a text for the user that names both.
    QString startTransfer(const QString &file, bool reportProgress);
    /// 1 when this server's version is greater, or when one version is the beginning of the other; 0 when
    /// they are equal; -1 when the other is greater.
    int compareVersion(const QString &other) const;
    /// Finds the newest firmware in the server's index, a JSON document. An invalid index offers none.
    void setRxUpdateJson(QTemporaryFile *index);

signals:
    void trigger_StartTransfer(const UdpFileRequest &request, bool reportProgress);

private:
    QHostAddress m_address;
    QString m_name;
    QString m_version = QStringLiteral("0.0");
    QString m_fileName;
};
