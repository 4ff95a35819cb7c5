// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launchermessage/launchermessage.h"

#include "devicetools/sharedfile.h"
#include "launchermessage/launcherprocess.h"

#include <QJsonDocument>

#include <csignal>
#include <pwd.h>
#include <unistd.h>

namespace LauncherMessage {

namespace {

const QString fileName = QStringLiteral("/tmp/msg.json");

QJsonObject message(const char *type, const QJsonObject &content)
{
    const QString name = QLatin1String(type);
    return {{QStringLiteral("type"), name}, {name, content}};
}

} // namespace

QJsonObject networkStatus(const QString &interface, const QString &text)
{
    return message("network status",
                   {{QStringLiteral("interface"), interface}, {QStringLiteral("message"), text}});
}

std::optional<QJsonObject> fromArguments(const QStringList &arguments)
{
    const QString kind = arguments.value(0);
    if (kind == QLatin1String("network") && arguments.size() == 3) {
        static const QStringList interfaces{QStringLiteral("eth0"), QStringLiteral("wlan0")};
        static const QStringList states{QStringLiteral("link"), QStringLiteral("connected"),
                                        QStringLiteral("no link")};
        if (interfaces.contains(arguments.at(1)) && states.contains(arguments.at(2)))
            return networkStatus(arguments.at(1), arguments.at(2));
    }
    if (kind == QLatin1String("display") && arguments.size() == 2) {
        const QString &status = arguments.at(1);
        if (status == QLatin1String("add") || status == QLatin1String("remove"))
            return message("dual monitor status", {{QStringLiteral("status"), status}});
    }
    if (kind == QLatin1String("audio") && arguments.size() == 1)
        return QJsonObject{{QStringLiteral("type"), QStringLiteral("refresh audio")}};
    return std::nullopt;
}

bool send(const QJsonObject &content)
{
    // In /tmp only its owner may replace a file, and both root and the launcher's user send messages.
    const passwd *owner = geteuid() == 0 ? getpwnam("kt964") : nullptr;
    if (!SharedFile::replace(fileName, QJsonDocument(content).toJson(QJsonDocument::Compact),
                             owner ? owner->pw_uid : uid_t(-1), owner ? owner->pw_gid : gid_t(-1)))
        return false;
    for (const int pid : LauncherProcess::all())
        kill(pid, SIGUSR1);
    return true;
}

} // namespace LauncherMessage
