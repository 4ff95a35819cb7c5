// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QHash>

#include <algorithm>
#include <vector>

namespace JsonText {

namespace {

constexpr size_t depthLimit = 1025; // the parser stops earlier

struct Span
{
    int start = 0;
    int end = 0; ///< behind the comma; 0 before it is read
};

struct Level
{
    bool isObject = false;
    bool expectsKey = false;
    QByteArray key; ///< of the member being read
    QHash<QByteArray, Span> members;
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

/// Begins a member at `start`. An earlier one of the same key gives way to blanks.
void beginMember(Level &level, const QByteArray &key, int start, QByteArray &text)
{
    const Span earlier = level.members.value(key);
    if (earlier.end > 0)
        std::fill(text.begin() + earlier.start, text.begin() + earlier.end, ' ');
    level.expectsKey = false;
    level.key = key;
    level.members.insert(key, {start, 0});
}

void endMember(Level &level, int end)
{
    if (!level.isObject)
        return;
    level.expectsKey = true;
    const auto member = level.members.find(level.key);
    if (member != level.members.end())
        member->end = end;
}

} // namespace

QByteArray withLastMembers(QByteArray text)
{
    std::vector<Level> levels(1);
    for (int i = 0; i < text.size() && levels.size() <= depthLimit; ++i) {
        const char c = text.at(i);
        if (c == '"') {
            const int end = endOfString(text, i);
            if (levels.back().expectsKey)
                beginMember(levels.back(), decoded(text.mid(i + 1, end - i - 1)), i, text);
            i = end;
        } else if (c == '{' || c == '[') {
            levels.push_back({c == '{', c == '{', {}, {}});
        } else if ((c == '}' || c == ']') && levels.size() > 1) {
            levels.pop_back();
        } else if (c == ',') {
            endMember(levels.back(), i + 1);
        }
    }
    return text;
}

QJsonObject parsed(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(withLastMembers(text), &error);
    if (error.error != QJsonParseError::IllegalUTF8String)
        return document.object();
    const QByteArray fromLatin1 = QString::fromLatin1(text).toUtf8();
    return QJsonDocument::fromJson(withLastMembers(fromLatin1)).object();
}

} // namespace JsonText
