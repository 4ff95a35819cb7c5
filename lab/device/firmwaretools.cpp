// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "lab-device/output.h"
#include "lab-device/tools.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QThread>

namespace {
constexpr int parts = 8;
constexpr int defaultPartSize = 32 * 1024;
constexpr int defaultPauseMs = 100;

QString imagePath(const DeviceRoot &root)
{
    return root.file(QStringLiteral("/var/lib/updates/new-firmware.img"));
}

int numberOr(const QString &text, int fallback)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber ? number : fallback;
}

// The image that the FTP server behind the proxy has: a file of this machine, or some bytes.
QByteArray servedImage(const DeviceRoot &root)
{
    QFile file(root.state(QStringLiteral("proxy-image")));
    if (!file.fileName().isEmpty() && file.open(QIODevice::ReadOnly))
        return file.readAll();
    QByteArray image;
    for (int i = 0; i < parts * defaultPartSize; ++i)
        image += static_cast<char>(i % 251);
    return image;
}

// An image of the lab says in its first line which firmware it is, "KT964 firmware 1.2.0".
void takeVersion(const DeviceRoot &root, QFile *image)
{
    image->seek(0);
    const QString title = QString::fromLatin1(image->readLine(64)).trimmed();
    const QString start = QStringLiteral("KT964 firmware ");
    if (!title.startsWith(start))
        return;
    QSettings release(root.file(QStringLiteral("/etc/kt-release")), QSettings::IniFormat);
    release.setValue(QStringLiteral("firmware/version"), title.mid(start.size()));
}
} // namespace

// kt-ftp-proxy-update URL HOST PORT USER PASSWORD
int runFtpProxyUpdate(const ToolCall &call)
{
    if (call.arguments.size() != 5) {
        printError(QStringLiteral("usage: kt-ftp-proxy-update URL HOST PORT USER PASSWORD"));
        return 2;
    }
    const QStringList end = call.root.state(QStringLiteral("proxy-end")).split(QLatin1Char(' '));
    const int lastPart = numberOr(end.value(1), parts);
    const auto pause = static_cast<unsigned long>(
        numberOr(call.root.state(QStringLiteral("proxy-pause")), defaultPauseMs));
    const QByteArray image = servedImage(call.root);
    QFile file(imagePath(call.root));
    QDir().mkpath(call.root.file(QStringLiteral("/var/lib/updates")));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    const int partSize = (image.size() + parts - 1) / parts;
    for (int part = 0; part < qMin(parts, lastPart); ++part) {
        const QByteArray bytes = image.mid(part * partSize, partSize);
        if (file.write(bytes) != bytes.size() || !file.flush())
            return 1;
        printLine(QStringLiteral("%1K .......... .......... ..........").arg(file.size() / 1024, 6));
        QThread::msleep(pause);
    }
    if (end.constFirst() == QLatin1String("hang"))
        QThread::sleep(600);
    return end.constFirst() == QLatin1String("fail") ? 1 : 0;
}

// update-ui: notes what it is given, takes the version over, and restarts the device.
int runUpdateUi(const ToolCall &call)
{
    QFile file(imagePath(call.root));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
        printError(QStringLiteral("update-ui: there is no image"));
        return 1;
    }
    const QString note
        = QStringLiteral("%1 %2").arg(file.size()).arg(QString::fromLatin1(hash.result().toHex()));
    takeVersion(call.root, &file);
    const bool noted = call.root.setState(QStringLiteral("installed-image"), note);
    return noted && call.root.setState(QStringLiteral("power"), QStringLiteral("restarted")) ? 0 : 1;
}
