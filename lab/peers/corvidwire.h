// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QVector>

#include <optional>

/// The datagrams between devices and Corvid servers. Numbers are little-endian, addresses are in network byte
/// order.

/// A server in a server-list reply.
struct CorvidEntry
{
    QString name;
    QHostAddress address;
};

/// A device's request to a Corvid server.
struct CorvidRequest
{
    enum class Kind : quint32 { Discovery = 3, FileBlock = 5 };

    Kind kind = Kind::Discovery;
    quint32 position = 0;
    QString fileName;
};

constexpr quint16 corvidServerPort = 1283;
constexpr int corvidRequestSize = 140;

/// Returns nothing for a wrong size, a wrong marker or an unknown kind.
std::optional<CorvidRequest> parseCorvidRequest(const QByteArray &datagram);

/// Returns a reply with these entries. Cuts names after 32 UTF-16 units.
QByteArray serverListReply(const QVector<CorvidEntry> &entries);

constexpr int corvidBlockSize = 1024;

/// Returns one block of a file: always 1036 bytes, padded with zeros.
QByteArray fileBlockReply(quint32 position, quint32 total, const QByteArray &data);
