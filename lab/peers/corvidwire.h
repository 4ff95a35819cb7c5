// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QVector>

#include <optional>

// What devices and Corvid servers send each other, as bytes. Numbers are little-endian, addresses in network
// order.

// A server as a server-list reply names it.
struct CorvidEntry
{
    QString name;
    QHostAddress address;
};

// A datagram that a device sends to a Corvid server.
struct CorvidRequest
{
    enum class Kind : quint32 { Discovery = 3, FileBlock = 5 };

    Kind kind = Kind::Discovery;
    quint32 position = 0;
    QString fileName;
};

constexpr quint16 corvidServerPort = 1283;
constexpr int corvidRequestSize = 140;

// Nothing when the bytes are no request: wrong size, wrong marker or an unknown kind.
std::optional<CorvidRequest> parseCorvidRequest(const QByteArray &datagram);

// A reply with these entries. Names longer than 32 UTF-16 units are cut.
QByteArray serverListReply(const QVector<CorvidEntry> &entries);

// One block of a file, always 1036 bytes: what the file does not fill is zero.
constexpr int corvidBlockSize = 1024;
QByteArray fileBlockReply(quint32 position, quint32 total, const QByteArray &data);
