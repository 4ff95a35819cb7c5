// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

class JsonModule;

/// What the launcher remembers of its user's choices, under "main window" in the document. Each call reads
/// the document anew, so that a change made meanwhile is kept, and writes it. Without a document nothing
/// happens.
namespace WindowMemory {

constexpr int historyLength = 10;

/// Puts an address first where it is not yet in the history of that key; the history then.
QJsonArray remember(JsonModule *configuration, const QString &key, const QString &address);

void store(JsonModule *configuration, const QString &key, const QJsonValue &value);

} // namespace WindowMemory
