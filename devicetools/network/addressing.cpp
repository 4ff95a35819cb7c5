// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/addressing.h"

#include "devicetools/checks.h"
#include "devicetools/document.h"

#include <utility>

namespace {

/// NetworkManager goes on asking a DHCP server that is silent, however long. Otherwise it would give up an
/// interface for minutes because the server started later than the device.
constexpr qint32 withoutEnd = 0x7fffffff;

} // namespace

std::optional<Addressing> Addressing::fromDocument(const QJsonObject &interface)
{
    Addressing result;
    if (Document::text(interface, "type") != QLatin1String("static"))
        return result;
    result.isStatic = true;
    result.address = Document::text(interface, "IP address");
    if (result.address.isEmpty()) // as a document spells it that was made from the live interface
        result.address = Document::text(interface, "Ip address");
    QString mask = Document::text(interface, "network mask");
    result.gateway = Document::text(interface, "default gateway");
    // Such a document has these two crosswise.
    if (!Checks::prefixOfMask(mask) && Checks::prefixOfMask(result.gateway))
        std::swap(mask, result.gateway);
    const std::optional<int> prefixLength = Checks::prefixOfMask(mask);
    if (!Checks::isHostAddress(result.address) || !prefixLength
        || !(result.gateway.isEmpty() || Checks::isHostAddress(result.gateway)))
        return std::nullopt;
    result.prefixLength = *prefixLength;
    return result;
}

Addressing Addressing::fromProfile(const QVariantMap &ipv4)
{
    Addressing result;
    result.isStatic = ipv4.value(QStringLiteral("method")).toString() != QLatin1String("auto");
    const auto addresses = qdbus_cast<NMVariantMapList>(ipv4.value(QStringLiteral("address-data")));
    if (!addresses.isEmpty()) {
        result.address = addresses.first().value(QStringLiteral("address")).toString();
        result.prefixLength = addresses.first().value(QStringLiteral("prefix")).toInt();
    }
    result.gateway = ipv4.value(QStringLiteral("gateway")).toString();
    return result;
}

QVariantMap Addressing::toProfile() const
{
    if (!isStatic)
        return {{QStringLiteral("method"), QStringLiteral("auto")},
                {QStringLiteral("dhcp-timeout"), withoutEnd}};
    if (address.isEmpty())
        return {{QStringLiteral("method"), QStringLiteral("disabled")}};
    const NMVariantMapList addresses{
        {{QStringLiteral("address"), address}, {QStringLiteral("prefix"), static_cast<uint>(prefixLength)}}};
    QVariantMap result{{QStringLiteral("method"), QStringLiteral("manual")},
                       {QStringLiteral("address-data"), QVariant::fromValue(addresses)}};
    if (!gateway.isEmpty())
        result.insert(QStringLiteral("gateway"), gateway);
    return result;
}
