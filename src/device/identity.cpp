// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/identity.h"

#include "device/paths.h"

#include <QCryptographicHash>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>

#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <systemd/sd-id128.h>
#include <unistd.h>

namespace Identity {

namespace {

// The VideoCore driver's property request: a message of 32-bit words that the firmware answers in place.
constexpr unsigned long propertyRequest = _IOWR(100, 0, char *);
constexpr std::uint32_t processRequest = 0;
constexpr std::uint32_t responseSuccess = 0x80000000;
constexpr std::uint32_t boardSerialTag = 0x00010004;
constexpr std::uint32_t valueBytes = 8;

constexpr qint64 sizeLimit = 4096;
constexpr int shortestSerial = 4;
constexpr sd_id128_t serialNumberPurpose
    = SD_ID128_MAKE(8d, 2f, 5c, 71, 0e, 93, 4b, 6a, a4, 1d, 76, c8, 3e, 59, f0, 27);

bool ask(int mailbox, std::uint32_t &serial)
{
    std::uint32_t message[8] = {sizeof message, processRequest, boardSerialTag, valueBytes, 0, 0, 0, 0};
    if (::ioctl(mailbox, propertyRequest, message) < 0 || message[1] != responseSuccess)
        return false;
    serial = message[5];
    return true;
}

QString mailboxSerial()
{
    const int mailbox = ::open(QFile::encodeName(Paths::propertyMailbox()).constData(), O_RDONLY | O_CLOEXEC);
    if (mailbox < 0)
        return QString();
    std::uint32_t serial = 0;
    const bool answered = ask(mailbox, serial);
    ::close(mailbox);
    return answered ? QString::number(serial, 16) : QString();
}

/// A short text file of the system; empty when there is none.
QString text(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(sizeLimit)).remove(QChar::Null)
                                          : QString();
}

/// The number that the mailbox of this board would give, for a kernel without the mailbox. It is the lower
/// half of the device tree's number.
QString deviceTreeSerial()
{
    const QString tree = QStringLiteral("/proc/device-tree/");
    if (!text(tree + QLatin1String("compatible")).contains(QLatin1String("raspberrypi")))
        return QString();
    const quint64 serial = text(tree + QLatin1String("serial-number")).toULongLong(nullptr, 16);
    return serial == 0 ? QString() : QString::number(serial & 0xffffffff, 16);
}

/// What the firmware says of the machine. Only root may read most of it, so the service manager hands it
/// over.
QStringList firmwareTexts()
{
    const QString handedOver = qEnvironmentVariable("CREDENTIALS_DIRECTORY");
    QStringList texts{text(QStringLiteral("/proc/device-tree/serial-number"))};
    for (const char *name : {"product-serial", "board-serial", "product-uuid"})
        texts += handedOver.isEmpty() ? QString() : text(handedOver + QLatin1Char('/') + QLatin1String(name));
    return texts;
}

/// Whether a text that was simplified and in lower case can belong to one machine only.
bool distinguishes(const QString &text)
{
    static const QStringList fillers{
        QStringLiteral("03000200-0400-0500-0006-000700080009"),
        QStringLiteral("0123456789"),
        QStringLiteral("123456789"),
        QStringLiteral("1234567890"),
        QStringLiteral("base board serial number"),
        QStringLiteral("board serial number"),
        QStringLiteral("chassis serial number"),
        QStringLiteral("default string"),
        QStringLiteral("empty"),
        QStringLiteral("invalid"),
        QStringLiteral("no asset information"),
        QStringLiteral("none"),
        QStringLiteral("not applicable"),
        QStringLiteral("not available"),
        QStringLiteral("not specified"),
        QStringLiteral("serial number"),
        QStringLiteral("system serial number"),
        QStringLiteral("to be filled by o.e.m."),
        QStringLiteral("to be filled by oem"),
        QStringLiteral("unknown"),
    };
    QString characters = text;
    characters.remove(QRegularExpression(QStringLiteral("[^a-z0-9]")));
    return characters.size() >= shortestSerial && characters.count(characters.front()) < characters.size()
        && !fillers.contains(text);
}

/// The first 64 bits of it, which is enough to tell machines apart.
QString hexadecimal(const QByteArray &bytes)
{
    return QString::number(bytes.left(8).toHex().toULongLong(nullptr, 16), 16);
}

/// The identifier of the installed system must not leave the machine; what is derived from it may.
QString systemSerial()
{
    sd_id128_t identifier = {};
    if (sd_id128_get_machine_app_specific(serialNumberPurpose, &identifier) < 0)
        return QString();
    return hexadecimal(QByteArray(reinterpret_cast<const char *>(identifier.bytes), sizeof identifier.bytes));
}

} // namespace

Firmware firmware()
{
    const QSettings release(Paths::release(), QSettings::IniFormat);
    return {release.value(QStringLiteral("firmware/version"), QStringLiteral("?.?.?")).toString(),
            release.value(QStringLiteral("firmware/name")).toString()};
}

QString derivedSerialNumber(const QStringList &firmwareTexts)
{
    QByteArray known;
    for (const QString &text : firmwareTexts) {
        const QString plain = text.simplified().toLower();
        if (distinguishes(plain))
            known += plain.toUtf8() + '\n';
    }
    return known.isEmpty()
        ? QString()
        : hexadecimal(QCryptographicHash::hash("KT964 serial number\n" + known, QCryptographicHash::Sha256));
}

QString serialNumber()
{
    if (QString serial = mailboxSerial(); !serial.isEmpty() || !Paths::root().isEmpty())
        return serial;
    if (QString serial = deviceTreeSerial(); !serial.isEmpty())
        return serial;
    if (QString serial = derivedSerialNumber(firmwareTexts()); !serial.isEmpty())
        return serial;
    return systemSerial();
}

qint64 uptimeSeconds()
{
    timespec now = {};
    return ::clock_gettime(CLOCK_BOOTTIME, &now) == 0 ? static_cast<qint64>(now.tv_sec) : -1;
}

} // namespace Identity
