// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificate.h"

namespace {

constexpr int longestText = 16 * 1024;

bool isDisplayable(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

} // namespace

bool Certificate::isKnown() const
{
    return !fingerprint.isEmpty();
}

Validity validityOf(const Certificate &certificate, const QDateTime &now)
{
    if (!certificate.validFrom.isValid() || !certificate.validTo.isValid())
        return Validity::Unknown;
    if (now < certificate.validFrom)
        return Validity::NotYetValid;
    return now > certificate.validTo ? Validity::Expired : Validity::Valid;
}

QString displayable(const QString &text)
{
    QString result = text.size() > longestText ? text.left(longestText) + QChar(0x2026) : text;
    for (QChar &character : result) {
        if (!isDisplayable(character))
            character = QChar(QChar::ReplacementCharacter);
    }
    return result;
}
