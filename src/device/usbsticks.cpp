// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/usbsticks.h"

#include "device/paths.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace {

constexpr int levelLimit = 2;

bool isMountPoint(const QString &folder)
{
    struct stat here = {};
    struct stat above = {};
    return ::stat(QFile::encodeName(folder).constData(), &here) == 0
        && ::stat(QFile::encodeName(folder + QLatin1String("/..")).constData(), &above) == 0
        && here.st_dev != above.st_dev;
}

void collect(const QString &folder, int level, QVector<UsbStick> &found)
{
    const QFileInfoList below
        = QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo &entry : below) {
        const QString path = entry.absoluteFilePath();
        const bool isMounted = isMountPoint(path);
        const int before = found.size();
        if (!isMounted && level < levelLimit)
            collect(path, level + 1, found);
        const bool isLabStick = !Paths::root().isEmpty() && found.size() == before;
        if (isMounted || isLabStick)
            found += {entry.fileName(), path, entry.isWritable()};
    }
}

} // namespace

namespace UsbSticks {

QVector<UsbStick> mounted()
{
    QVector<UsbStick> found;
    collect(Paths::media(), 1, found);
    std::stable_partition(found.begin(), found.end(), [](const UsbStick &stick) { return stick.writable; });
    return found;
}

} // namespace UsbSticks
