// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "command/commands.h"
#include "command/labcommand.h"
#include "lab-device/toolbox.h"
#include "lab-device/usbports.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr const char *folders[] = {"tmp",
                                   "var/lib/kt964/certificates/cacerts",
                                   "var/lib/updates",
                                   "opt/Tessaro",
                                   "lab/state",
                                   "lab/faults",
                                   "lab/answers"};

/// Creates or updates a link. Keeps a file that a user has put in its place.
bool placeLink(const QString &target, const QString &link)
{
    const QFileInfo present(link);
    if (present.exists() && !present.isSymLink())
        return true;
    if (present.isSymLink() && present.symLinkTarget() == target)
        return true;
    QFile::remove(link);
    return QFile::link(target, link);
}

bool placeTools(const DeviceRoot &root, const QString &self)
{
    for (const Tool &tool : toolTable()) {
        const QString folder = root.file(QLatin1String(tool.folder));
        if (!QDir().mkpath(folder) || !placeLink(self, folder + QLatin1Char('/') + QLatin1String(tool.name)))
            return false;
    }
    return true;
}

/// Copies the files of a new device. Keeps existing files.
bool placeFiles(const DeviceRoot &root)
{
    const QString skeleton = QStringLiteral(":/skeleton/");
    QDirIterator files(skeleton, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString source = files.next();
        const QString copy = root.file(source.mid(skeleton.size()));
        if (QFileInfo::exists(copy))
            continue;
        if (!QDir().mkpath(QFileInfo(copy).path()) || !QFile::copy(source, copy))
            return false;
        QFile::setPermissions(copy,
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    }
    return true;
}

/// Links the programs that open sessions, if they are built.
void placeSessionClients(const DeviceRoot &root, const QString &self)
{
    const QString folder = qEnvironmentVariable("KT_BIN_DIR", QFileInfo(self).path()) + QLatin1Char('/');
    for (const char *link : {"opt/Tessaro/zClient", "usr/bin/solva-client"}) {
        const QString path = root.file(QLatin1String(link));
        const QFileInfo client(folder + QFileInfo(path).fileName());
        if (client.exists())
            placeLink(client.absoluteFilePath(), path);
    }
}

void nameHost(const DeviceRoot &root, const QString &name)
{
    for (const QString &state : {QStringLiteral("default-hostname"), QStringLiteral("hostname")})
        if (root.state(state).isEmpty())
            root.setState(state, name);
}

} // namespace

int makeRootCommand()
{
    LabCommand command(
        QStringLiteral("make-root"),
        QStringLiteral("Creates a device root, or completes one; keeps the state of an existing one."));
    command.addArgument(QStringLiteral("DIR"), QStringLiteral("The folder; created if missing."));
    command.addOption(QStringLiteral("hostname"), QStringLiteral("The host name of a new device."),
                      QStringLiteral("NAME"));
    command.process(1, 1);

    const DeviceRoot root(command.argument(0));
    for (const char *folder : folders)
        if (!QDir().mkpath(root.file(QLatin1String(folder))))
            command.fail(QStringLiteral("cannot create %1").arg(root.file(QLatin1String(folder))));
    const QString self = QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
    if (!placeTools(root, self) || !placeFiles(root) || !UsbPorts(root).create())
        command.fail(QStringLiteral("cannot fill %1").arg(root.path()));
    placeSessionClients(root, self);
    const QString name = command.value(QStringLiteral("hostname"));
    nameHost(root, name.isEmpty() ? QStringLiteral("kt964-lab") : name);
    return 0;
}
