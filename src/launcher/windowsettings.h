// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

class JsonModule;

/// The user's choices in the main window, stored under "main window" in the document. Each call re-reads the
/// document before it writes, so that no other change is lost. Without a document the calls do nothing.
namespace WindowSettings {

constexpr int historyLength = 10;

/// Puts a new address first in the history stored under the key, and returns the history.
QJsonArray addToHistory(JsonModule *configuration, const QString &key, const QString &address);

void store(JsonModule *configuration, const QString &key, const QJsonValue &value);

} // namespace WindowSettings
