// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/ipv4validator.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace {

constexpr int octets = 4;

/// A number of a dotted address; nothing for what is none, such as one with leading zeros.
std::optional<quint32> octet(const QString &text)
{
    const bool plain = !text.isEmpty() && text.size() <= 3
        && std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); })
        && (text.size() == 1 || text.at(0) != QLatin1Char('0'));
    const quint32 number = text.toUInt();
    return plain && number <= 0xFF ? std::optional<quint32>(number) : std::nullopt;
}

std::optional<quint32> number(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    quint32 result = 0;
    for (const QString &part : parts) {
        const std::optional<quint32> value = octet(part);
        if (!value)
            return std::nullopt;
        result = result << 8 | *value;
    }
    return parts.size() == octets ? std::optional<quint32>(result) : std::nullopt;
}

bool mayBecomeOne(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return parts.size() <= octets && std::all_of(parts.begin(), parts.end(), [](const QString &part) {
               return part.isEmpty() || octet(part);
           });
}

} // namespace

Ipv4Validator::Ipv4Validator(Kind kind, QObject *parent)
    : QValidator(parent)
    , m_kind(kind)
{ }

bool Ipv4Validator::isHost(const QString &text)
{
    const std::optional<quint32> address = number(text);
    const quint32 network = address.value_or(0) >> 24;
    return network > 0 && network != 127 && network < 224;
}

bool Ipv4Validator::isMask(const QString &text)
{
    // All ones come first: what is left of them, inverted, is one less than a power of two.
    const quint32 mask = number(text).value_or(0);
    return mask != 0 && (~mask & (~mask + 1)) == 0;
}

QValidator::State Ipv4Validator::validate(QString &input, int &position) const
{
    input = input.trimmed();
    position = qMin(position, static_cast<int>(input.size()));
    if (m_kind == Kind::Host ? isHost(input) : isMask(input))
        return Acceptable;
    return mayBecomeOne(input) ? Intermediate : Invalid;
}
