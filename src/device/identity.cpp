// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/identity.h"

#include "device/paths.h"

#include <QFile>
#include <QSettings>

#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Identity {

namespace {

// The VideoCore driver's property request: a message of 32-bit words that the firmware answers in place.
constexpr unsigned long propertyRequest = _IOWR(100, 0, char *);
constexpr std::uint32_t processRequest = 0;
constexpr std::uint32_t responseSuccess = 0x80000000;
constexpr std::uint32_t boardSerialTag = 0x00010004;
constexpr std::uint32_t valueBytes = 8;

bool ask(int mailbox, std::uint32_t &serial)
{
    std::uint32_t message[8] = {sizeof message, processRequest, boardSerialTag, valueBytes, 0, 0, 0, 0};
    if (::ioctl(mailbox, propertyRequest, message) < 0 || message[1] != responseSuccess)
        return false;
    serial = message[5];
    return true;
}

} // namespace

Firmware firmware()
{
    const QSettings release(Paths::release(), QSettings::IniFormat);
    return {release.value(QStringLiteral("firmware/version"), QStringLiteral("?.?.?")).toString(),
            release.value(QStringLiteral("firmware/name")).toString()};
}

QString serialNumber()
{
    const int mailbox = ::open(QFile::encodeName(Paths::propertyMailbox()).constData(), O_RDONLY | O_CLOEXEC);
    if (mailbox < 0)
        return QString();
    std::uint32_t serial = 0;
    const bool answered = ask(mailbox, serial);
    ::close(mailbox);
    return answered ? QString::number(serial, 16) : QString();
}

qint64 uptimeSeconds()
{
    timespec now = {};
    return ::clock_gettime(CLOCK_BOOTTIME, &now) == 0 ? static_cast<qint64>(now.tv_sec) : -1;
}

} // namespace Identity
