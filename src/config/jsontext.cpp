// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSet>

#include <vector>

Q_LOGGING_CATEGORY(lcText, "kt.config.text")

namespace JsonText {

namespace {

constexpr size_t depthLimit = 1025; // the parser stops earlier

struct Level
{
    bool isObject = false;
    bool expectsKey = false;
    QSet<QByteArray> keys;
};

/// The position of the quote that closes the string at `quote`, or the end of the text.
int endOfString(const QByteArray &text, int quote)
{
    for (int i = quote + 1; i < text.size(); ++i) {
        if (text.at(i) == '\\')
            ++i;
        else if (text.at(i) == '"')
            return i;
    }
    return text.size();
}

QByteArray decoded(const QByteArray &key)
{
    if (!key.contains('\\'))
        return key;
    return QJsonDocument::fromJson("[\"" + key + "\"]").array().at(0).toString().toUtf8();
}

/// False if the object already has the key.
bool addKey(Level &level, const QByteArray &key)
{
    const int before = level.keys.size();
    level.expectsKey = false;
    level.keys.insert(key);
    return level.keys.size() > before;
}

} // namespace

bool repeatsKey(const QByteArray &text)
{
    std::vector<Level> levels(1);
    for (int i = 0; i < text.size() && levels.size() <= depthLimit; ++i) {
        const char c = text.at(i);
        if (c == '"') {
            const int end = endOfString(text, i);
            if (levels.back().expectsKey && !addKey(levels.back(), decoded(text.mid(i + 1, end - i - 1))))
                return true;
            i = end;
        } else if (c == '{' || c == '[') {
            levels.push_back({c == '{', c == '{', {}});
        } else if ((c == '}' || c == ']') && levels.size() > 1) {
            levels.pop_back();
        } else if (c == ',') {
            levels.back().expectsKey = levels.back().isObject;
        }
    }
    return false;
}

QJsonObject parsed(const QByteArray &text)
{
    if (repeatsKey(text)) {
        qCWarning(lcText) << "document refused: it repeats a key";
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::IllegalUTF8String)
        return document.object();
    const QByteArray fromLatin1 = QString::fromLatin1(text).toUtf8();
    return repeatsKey(fromLatin1) ? QJsonObject() : QJsonDocument::fromJson(fromLatin1).object();
}

} // namespace JsonText
