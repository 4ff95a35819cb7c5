// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"
#include "lab-device/tools.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString preferredMode = QStringLiteral("CEA 16");

/// Returns the monitor's description of the mode "GROUP CODE"; the mode itself when it has none.
QString described(const DeviceRoot &root, const QString &mode)
{
    const QString group = mode.section(QLatin1Char(' '), 0, 0);
    QFile file(root.labFile(QStringLiteral("answers/tvservice.-j.-m.") + group));
    if (!file.open(QIODevice::ReadOnly))
        return mode;
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).array()) {
        const QJsonObject offered = value.toObject();
        if (offered.value(QLatin1String("code")).toInt() == mode.section(QLatin1Char(' '), 1).toInt())
            return QStringLiteral("%1x%2 %3Hz")
                .arg(offered.value(QLatin1String("width")).toInt())
                .arg(offered.value(QLatin1String("height")).toInt())
                .arg(offered.value(QLatin1String("rate")).toInt());
    }
    return mode;
}

} // namespace

int runSetResolution(const ToolCall &call)
{
    const QString state = QStringLiteral("display-mode");
    if (call.arguments == QStringList(QStringLiteral("-m"))) {
        printLine(described(call.root, call.root.state(state)));
        return 0;
    }
    if (call.arguments.isEmpty())
        return call.root.setState(state, preferredMode) ? 0 : 1;
    if (call.arguments.size() == 2)
        return call.root.setState(state, call.arguments.join(QLatin1Char(' '))) ? 0 : 1;
    printError(QStringLiteral("usage: kt-set-resolution [GROUP CODE] | -m (the mode that is set)"));
    return 2;
}
