// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/leaseoptions.h"

#include "devicetools/checks.h"
#include "devicetools/sharedfile.h"

#include <QRegularExpression>

#include <pwd.h>

namespace LeaseOptions {

namespace {

const QString fileName = QStringLiteral("/tmp/dhcp-options.conf");
/// Option 224, the first of those that each site may use as it likes. NetworkManager prints its bytes in
/// hexadecimal.
const QString option = QStringLiteral("private_224");
constexpr int longestOption = 255;

QString numericAddress(const QByteArray &bytes)
{
    QStringList parts;
    for (const char byte : bytes)
        parts += QString::number(static_cast<uchar>(byte));
    const QString address = parts.join(QLatin1Char('.'));
    return Checks::isHostAddress(address) ? address : QString();
}

} // namespace

QString managementAddress(const QVariantMap &options)
{
    const QByteArray hexadecimal = options.value(option).toString().toLatin1();
    if (hexadecimal.size() > 3 * longestOption)
        return {};
    const QByteArray raw = QByteArray::fromHex(hexadecimal); // passes over the colons
    QByteArray bytes = raw;
    while (bytes.endsWith('\0')) // as some servers end a text
        bytes.chop(1);
    static const QRegularExpression form(
        QStringLiteral("\\A(?:https?://)?(?<host>[A-Za-z0-9.-]+)(?::(?<port>[0-9]{1,5}))?/?\\z"));
    const QString address = QString::fromLatin1(bytes);
    const QRegularExpressionMatch match = form.match(address);
    if (!match.hasMatch() && raw.size() == 4) // an address as a number, as some servers send it unasked
        return numericAddress(raw);
    const QString port = match.captured(QStringLiteral("port"));
    const bool isUsable = match.hasMatch() && Checks::isHostName(match.captured(QStringLiteral("host")))
        && (port.isEmpty() || Checks::number(port, 1, 65535));
    return isUsable ? address : QString();
}

bool publish(const QString &address)
{
    if (address.isEmpty())
        return SharedFile::remove(fileName);
    const passwd *owner = getpwnam("kt964");
    return owner
        && SharedFile::replace(fileName, "[QMD]\nqmd_address=" + address.toLatin1() + '\n', owner->pw_uid,
                               owner->pw_gid);
}

} // namespace LeaseOptions
