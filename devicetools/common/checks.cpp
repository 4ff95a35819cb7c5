// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/checks.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace Checks {

namespace {

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

} // namespace

std::optional<quint32> ipv4(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return std::nullopt;
    quint32 address = 0;
    for (const QString &part : parts) {
        const std::optional<int> value = number(part, 0, 255);
        if (!value)
            return std::nullopt;
        address = (address << 8) | static_cast<quint32>(*value);
    }
    return address;
}

bool isHostAddress(const QString &text)
{
    const std::optional<quint32> address = ipv4(text);
    if (!address)
        return false;
    const quint32 first = *address >> 24;
    return first != 0 && first != 127 && first < 224;
}

std::optional<int> prefixOfMask(const QString &mask)
{
    const std::optional<quint32> bits = ipv4(mask);
    if (!bits)
        return std::nullopt;
    for (int length = 1; length <= 32; ++length) {
        if (*bits == 0xffffffffU << (32 - length))
            return length;
    }
    return std::nullopt;
}

QString maskOfPrefix(int prefixLength)
{
    const quint32 bits = prefixLength <= 0 ? 0 : 0xffffffffU << (32 - std::min(prefixLength, 32));
    return QStringLiteral("%1.%2.%3.%4")
        .arg(bits >> 24)
        .arg(bits >> 16 & 255)
        .arg(bits >> 8 & 255)
        .arg(bits & 255);
}

std::optional<int> number(const QString &text, int least, int greatest)
{
    if (!matches(text, QStringLiteral("[0-9]{1,9}")))
        return std::nullopt;
    const int value = text.toInt();
    if (value < least || value > greatest)
        return std::nullopt;
    return value;
}

bool isHostName(const QString &text)
{
    const QString label = QStringLiteral("[A-Za-z0-9]([A-Za-z0-9-]{0,61}[A-Za-z0-9])?");
    return text.size() <= 253 && matches(text, label + QLatin1String("(\\.") + label + QLatin1String(")*"));
}

bool isSsid(const QString &text)
{
    const int size = text.toUtf8().size();
    return size >= 1 && size <= 32 && !text.contains(QChar::Null);
}

bool isWpaKey(const QString &text)
{
    return matches(text, QStringLiteral("[ -~]{8,63}|[0-9A-Fa-f]{64}"));
}

bool isPlainText(const QString &text, int longest)
{
    return text.size() <= longest && std::none_of(text.begin(), text.end(), [](QChar character) {
               return character < QLatin1Char(' ') || character.unicode() == 0x7f;
           });
}

} // namespace Checks
