// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/ipv4validator.h"

#include <QHostAddress>
#include <QRegularExpression>

namespace {

const QString octet = QStringLiteral("(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])");

/// The address, or 0 for any text but four plain decimal numbers: a leading zero would mean octal elsewhere.
quint32 number(const QString &text)
{
    const QHostAddress address(text);
    return address.protocol() == QAbstractSocket::IPv4Protocol && address.toString() == text
        ? address.toIPv4Address()
        : 0;
}

bool mayBecomeAddress(const QString &text)
{
    static const QRegularExpression beginning(QRegularExpression::anchoredPattern(
        octet + QStringLiteral("?(\\.") + octet + QStringLiteral("?){0,3}")));
    return beginning.match(text).hasMatch();
}

} // namespace

Ipv4Validator::Ipv4Validator(Kind kind, QObject *parent)
    : QValidator(parent)
    , m_kind(kind)
{ }

bool Ipv4Validator::isHost(const QString &text)
{
    const quint32 network = number(text) >> 24;
    return network > 0 && network != 127 && network < 224;
}

bool Ipv4Validator::isMask(const QString &text)
{
    // All ones come before all zeros: the inverted mask is one less than a power of two.
    const quint32 mask = number(text);
    return mask != 0 && (~mask & (~mask + 1)) == 0;
}

QValidator::State Ipv4Validator::validate(QString &input, int &position) const
{
    input = input.trimmed();
    position = qMin(position, static_cast<int>(input.size()));
    if (m_kind == Kind::Host ? isHost(input) : isMask(input))
        return Acceptable;
    return mayBecomeAddress(input) ? Intermediate : Invalid;
}
