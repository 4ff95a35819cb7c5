// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/deviceroot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

DeviceRoot::DeviceRoot(const QString &path)
    : m_path(path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath()))
{ }

DeviceRoot DeviceRoot::ofTool(const QString &invokedAs)
{
    const QString named = qEnvironmentVariable("KT_DEVICE_ROOT");
    if (!named.isEmpty())
        return DeviceRoot(named);
    const QString program
        = invokedAs.contains(QLatin1Char('/')) ? invokedAs : QStandardPaths::findExecutable(invokedAs);
    QDir folder = QFileInfo(program).absoluteDir();
    while (!folder.exists(QStringLiteral("lab/state")))
        if (!folder.cdUp())
            return DeviceRoot(QString());
    return DeviceRoot(folder.path());
}

bool DeviceRoot::isValid() const
{
    return !m_path.isEmpty() && QFileInfo(labFile(QStringLiteral("state"))).isDir();
}

QString DeviceRoot::file(const QString &devicePath) const
{
    if (devicePath == m_path || devicePath.startsWith(m_path + QLatin1Char('/')))
        return devicePath;
    return QDir::cleanPath(m_path + QLatin1Char('/') + devicePath);
}

QString DeviceRoot::labFile(const QString &name) const
{
    return m_path + QStringLiteral("/lab/") + name;
}

QString DeviceRoot::state(const QString &name) const
{
    QFile file(labFile(QStringLiteral("state/") + name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).trimmed();
}

bool DeviceRoot::setState(const QString &name, const QString &value) const
{
    QSaveFile file(labFile(QStringLiteral("state/") + name));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(value.toUtf8() + '\n');
    return file.commit();
}
