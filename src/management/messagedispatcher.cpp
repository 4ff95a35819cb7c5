// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "management/messagedispatcher.h"

#include "config/jsontext.h"
#include "device/diagnostics.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcDispatcher, "kt.management.dispatcher")

void MessageDispatcher::dispatch(const QByteArray &body, bool mergeAllowed)
{
    // A copy: while an action runs, the next message may arrive.
    const QJsonObject message = JsonText::parsed(body);
    m_message = message;
    const QJsonValue data = message.value(QLatin1String("data"));
    if (data.isObject() && mergeAllowed)
        saveConfiguration(data.toObject());
    else if (data.isArray())
        extractAction(data.toArray());
    if (const int code = message.value(QLatin1String("code")).toInt())
        qCDebug(lcDispatcher) << "the server's code:" << code;
}

void MessageDispatcher::extractAction(const QJsonArray &actions)
{
    for (const QJsonValue &action : actions)
        execute(action.toObject());
}

void MessageDispatcher::execute(const QJsonObject &action)
{
    const QString name = action.value(QLatin1String("action")).toString();
    const QJsonObject parameters = action.value(QLatin1String("params")).toObject();
    if (name == QLatin1String("UPDATE_FIRMWARE")) {
        Diagnostics::print(QStringLiteral("UPDATE FW"));
        updateFirmware(parameters.value(QLatin1String("downloadUrl")).toString());
    } else if (name == QLatin1String("REBOOT")) {
        Diagnostics::print(QStringLiteral("Reboot"));
        rebootDevice();
    } else if (name == QLatin1String("GET_CONFIGURATION")) {
        emit getConfiguration();
    } else if (name == QLatin1String("GET_PROFILE")) {
        Diagnostics::print(QStringLiteral("GET PROFILE"));
        emit getProfile();
    }
}

void MessageDispatcher::updateFirmware(const QString &url)
{
    int result = 0;
    emit firmwareUpdateURL(url, QString(), QString(), QString(), &result);
}

void MessageDispatcher::rebootDevice()
{
    int result = 0;
    emit check_resetPossible(&result);
    if (result == 0)
        emit ask_resetDevice();
}

void MessageDispatcher::saveConfiguration(const QJsonObject &configuration)
{
    Diagnostics::print(QStringLiteral("[MESSAGE DISPATECHER] MERGE REMOTE"));
    int result = 0;
    emit mergeRemoteConfig(configuration, &result);
}
