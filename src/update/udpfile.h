// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>

/// A request to a Corvid server for one block of a file.
struct UdpFileRequest
{
    UdpFileRequest() = default;
    UdpFileRequest(const QHostAddress &serverAddress, const QString &name)
        : server(serverAddress)
        , fileName(name)
    { }

    QHostAddress server;
    QString fileName;     ///< at most 127 Latin-1 characters are sent
    quint32 position = 0; ///< of the block in the file, in bytes
};

/// One block of a file, as received from a Corvid server.
struct UdpFileReply
{
    UdpFileReply(const QHostAddress &senderAddress, unsigned long blockPosition, unsigned long totalSize,
                 const QByteArray &bytes)
        : sender(senderAddress)
        , position(static_cast<quint32>(blockPosition))
        , total(static_cast<quint32>(totalSize))
        , data(bytes)
    { }

    QHostAddress sender;
    quint32 position; ///< of the block in the file, in bytes
    quint32 total;    ///< the whole file's size in bytes, not zero
    QByteArray data;  ///< at most 1024 bytes
};
