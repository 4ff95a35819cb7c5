// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/windowsettings.h"

#include "config/jsonmodule.h"
#include "config/keys.h"

#include <QJsonObject>

namespace WindowSettings {

QJsonArray addToHistory(JsonModule *configuration, const QString &key, const QString &address)
{
    if (!configuration)
        return {};
    configuration->readAgain();
    const QJsonObject root = configuration->getDocument().object();
    QJsonArray history = root.value(Key::mainWindow).toObject().value(key).toArray();
    if (!history.contains(address))
        history.prepend(address);
    if (history.size() > historyLength)
        history.removeLast();
    store(configuration, key, history);
    return history;
}

void store(JsonModule *configuration, const QString &key, const QJsonValue &value)
{
    if (!configuration)
        return;
    configuration->change([&key, &value](QJsonObject &root) {
        QJsonObject window = root.value(Key::mainWindow).toObject();
        window.insert(key, value);
        root.insert(Key::mainWindow, window);
        return true;
    });
}

} // namespace WindowSettings
