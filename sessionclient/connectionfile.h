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
    // Filled as far as the document goes, also when it is refused.
    SessionDescription session;
    // Why the document is refused; nothing when it is accepted.
    std::optional<EndReason> problem;
    QString detail;
};

// Reads a connection document. Nothing is guessed: a member of the wrong type, a number out of range or a
// text with a control character refuses the document; an absent member means its neutral value.
ParsedConnection parseConnection(const QByteArray &document);

// The same for a file; one that cannot be read, or is larger than any connection document, is refused.
ParsedConnection readConnectionFile(const QString &path);

bool hasControlCharacter(const QString &text);

// Whether an address can be given to FreeRDP and means a server.
bool isUsableAddress(const QString &address);
