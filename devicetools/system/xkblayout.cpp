// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-system/xkblayout.h"

#include <QRegularExpression>

std::optional<XkbLayout> XkbLayout::from(const QString &text)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        QStringLiteral("([A-Za-z0-9_-]{1,32})(?:\\(([A-Za-z0-9_-]{1,64})\\))?")));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch() || text.startsWith(QLatin1Char('-')))
        return std::nullopt;
    return XkbLayout{match.captured(1), match.captured(2)};
}

QString XkbLayout::toString() const
{
    return variant.isEmpty() ? layout : QStringLiteral("%1(%2)").arg(layout, variant);
}
