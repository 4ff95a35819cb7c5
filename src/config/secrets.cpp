// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/secrets.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int shortestInsideWords = 4;

/// The parts of a key's name that make it a secret, in lower case.
const char *const secretWords[] = {"password", "passphrase", "passwd", "secret"};

const QRegularExpression &urlPassword()
{
    static const QRegularExpression pattern(QStringLiteral("(?<=://)([^\\s/:@]*):([^\\s/]+)@"));
    return pattern;
}

QJsonValue emptied(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return QString();
    case QJsonValue::Double:
        return 0;
    case QJsonValue::Array:
        return QJsonArray();
    case QJsonValue::Object:
        return QJsonObject();
    case QJsonValue::Bool:
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        break;
    }
    return value;
}

QJsonValue blankedValue(const QJsonValue &value)
{
    if (value.isObject())
        return Secrets::blanked(value.toObject());
    if (value.isString())
        return value.toString().replace(urlPassword(), QStringLiteral("\\1:@"));
    if (!value.isArray())
        return value;
    QJsonArray array = value.toArray();
    std::transform(array.begin(), array.end(), array.begin(), blankedValue);
    return array;
}

void collect(const QJsonValue &value, bool secret, QStringList &values)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto member = object.begin(); member != object.end(); ++member)
            collect(member.value(), secret || Secrets::isSecret(member.key()), values);
    } else if (value.isArray()) {
        for (const QJsonValue element : value.toArray())
            collect(element, secret, values);
    } else if (secret) {
        values += value.isDouble() ? value.toVariant().toString() : value.toString();
    } else {
        const QRegularExpressionMatch url = urlPassword().match(value.toString());
        values += url.captured(2);
    }
}

/// The spellings of a value in a log.
QStringList spellings(const QString &value)
{
    QString escaped = value;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""));
    QString quoted = value;
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return {value, escaped, quoted, QString::fromLatin1(QUrl::toPercentEncoding(value))};
}

} // namespace

namespace Secrets {

bool isSecret(const QString &key)
{
    if (key.compare(QLatin1String("key"), Qt::CaseInsensitive) == 0)
        return true; // the Wi-Fi pass phrase of an old document, which upgrades keep
    return std::any_of(std::begin(secretWords), std::end(secretWords), [&](const char *word) {
        return key.contains(QLatin1String(word), Qt::CaseInsensitive);
    });
}

QJsonObject blanked(const QJsonObject &document)
{
    QJsonObject result = document;
    for (auto member = result.begin(); member != result.end(); ++member) {
        const QJsonValue value = member.value();
        member.value() = isSecret(member.key()) ? emptied(value) : blankedValue(value);
    }
    return result;
}

QStringList valuesIn(const QJsonObject &document)
{
    QStringList values;
    collect(document, false, values);
    values.removeAll(QString());
    values.removeDuplicates();
    return values;
}

QString redacted(const QString &text, const QStringList &values)
{
    QStringList all;
    for (const QString &value : values)
        all += spellings(value);
    all.removeDuplicates();
    // Longest first, because one secret may be a part of another.
    std::sort(all.begin(), all.end(),
              [](const QString &left, const QString &right) { return left.size() > right.size(); });
    const QString mark = QStringLiteral("***");
    QString result = text;
    for (const QString &value : qAsConst(all)) {
        if (value.size() >= shortestInsideWords)
            result.replace(value, mark);
        else
            result.replace(QRegularExpression(QLatin1String("(?<!\\w)") + QRegularExpression::escape(value)
                                              + QLatin1String("(?!\\w)")),
                           mark);
    }
    return result.replace(urlPassword(), QStringLiteral("\\1:***@"));
}

} // namespace Secrets
