// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/endreason.h"
#include "session/sessiondescription.h"

#include <QByteArray>
#include <QString>

#include <optional>

struct ParsedConnection
{
    /// Holds the valid members even when the document is rejected.
    SessionDescription session;
    /// Why the document is rejected; empty when it is accepted.
    std::optional<EndReason> problem;
    QString detail;
};

/// Reads a connection document. Rejects one with a member of the wrong type, a number out of range or a text
/// with a control character. An absent member gets its default.
ParsedConnection parseConnection(const QByteArray &document);

/// Reads a connection file. Rejects an unreadable or oversized file.
ParsedConnection readConnectionFile(const QString &path);

bool hasControlCharacter(const QString &text);

/// Returns whether FreeRDP accepts the address as that of a server.
bool isUsableAddress(const QString &address);
