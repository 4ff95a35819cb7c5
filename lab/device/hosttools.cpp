// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"
#include "lab-device/tools.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString nameInDocument(const DeviceRoot &root)
{
    QFile file(root.file(QStringLiteral("/var/lib/kt964/config.json")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject general = QJsonDocument::fromJson(file.readAll())
                                    .object()
                                    .value(QLatin1String("general settings"))
                                    .toObject();
    return general.value(QLatin1String("device name")).toString();
}

} // namespace

int runSetHostname(const ToolCall &call)
{
    QString name;
    if (call.arguments == QStringList(QStringLiteral("-j")))
        name = nameInDocument(call.root);
    else if (call.arguments == QStringList(QStringLiteral("-r")))
        name = call.root.state(QStringLiteral("default-hostname"));
    if (name.isEmpty()) {
        printError(
            QStringLiteral("usage: kt-set-hostname -j (the name in the document) | -r (the default name)"));
        return 1;
    }
    return call.root.setState(QStringLiteral("hostname"), name) ? 0 : 1;
}

int runHostname(const ToolCall &call)
{
    printLine(call.root.state(QStringLiteral("hostname")));
    return 0;
}

int runLulling(const ToolCall &call)
{
    static const QHash<QString, QString> states{{QStringLiteral("-s"), QStringLiteral("off")},
                                                {QStringLiteral("-r"), QStringLiteral("restarted")},
                                                {QStringLiteral("-S"), QStringLiteral("asleep")}};
    const QString state = states.value(call.argument(0));
    if (state.isEmpty()) {
        printError(QStringLiteral("usage: kt-lulling -s (power off) | -r (restart) | -S (sleep)"));
        return 2;
    }
    return call.root.setState(QStringLiteral("power"), state) ? 0 : 1;
}
