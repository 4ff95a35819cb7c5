// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/takenaddress.h"

#include "device/durablefile.h"
#include "device/paths.h"

#include <QFile>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QSysInfo>

Q_LOGGING_CATEGORY(lcTakenAddress, "kt.services.link")

namespace {

constexpr qint64 sizeLimit = 4096;
const QString addressKey = QStringLiteral("address");
const QString broadcastKey = QStringLiteral("broadcast");
const QString prefixLengthKey = QStringLiteral("prefix length");
const QString bootKey = QStringLiteral("boot");

QString bootId()
{
    return QString::fromLatin1(QSysInfo::bootUniqueId());
}

} // namespace

std::optional<TakenAddress> TakenAddress::load()
{
    QFile file(Paths::takenAddress());
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject root = QJsonDocument::fromJson(file.read(sizeLimit)).object();
    const TakenAddress taken{root.value(addressKey).toString(), root.value(broadcastKey).toString(),
                             root.value(prefixLengthKey).toInt()};
    QHostAddress address;
    const bool usable = address.setAddress(taken.address)
        && address.protocol() == QAbstractSocket::IPv4Protocol && taken.prefixLength > 0
        && taken.prefixLength <= 32;
    return usable && root.value(bootKey).toString() == bootId() ? std::make_optional(taken) : std::nullopt;
}

void TakenAddress::save() const
{
    const QJsonObject root{{addressKey, address},
                           {broadcastKey, broadcast},
                           {prefixLengthKey, prefixLength},
                           {bootKey, bootId()}};
    const QString error = DurableFile::write(Paths::takenAddress(), QJsonDocument(root).toJson(), 0600);
    if (!error.isEmpty())
        qCCritical(lcTakenAddress).noquote() << "cannot write" << Paths::takenAddress() << ':' << error;
}

void TakenAddress::forget()
{
    QFile::remove(Paths::takenAddress());
}
