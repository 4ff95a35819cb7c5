// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/httpmessage.h"

#include <algorithm>

namespace {

/// A number of digits only; -1 for other text.
qint64 number(const QByteArray &text, int base)
{
    const auto isDigit = [base](char c) {
        return (c >= '0' && c <= '9') || (base == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
    };
    bool valid = !text.isEmpty() && std::all_of(text.begin(), text.end(), isDigit);
    const qint64 value = valid ? text.toLongLong(&valid, base) : -1;
    return valid ? value : -1;
}

} // namespace

QByteArray HttpHead::value(const QByteArray &name) const
{
    for (const auto &header : headers) {
        if (header.first.toLower() == name)
            return header.second;
    }
    return {};
}

std::optional<HttpHead> HttpHead::parse(const QByteArrayList &lines)
{
    const QByteArray first = lines.value(0);
    const int status = static_cast<int>(number(first.mid(9, 3), 10));
    const bool isStatusLine = first.startsWith("HTTP/1.") && first.size() >= 12 && first.at(8) == ' '
        && (first.size() == 12 || first.at(12) == ' ');
    if (!isStatusLine || status < 100)
        return std::nullopt;
    HttpHead head{status, first.mid(13).trimmed(), {}};
    for (const QByteArray &line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        if (colon > 0)
            head.headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    return head;
}

HttpBody::HttpBody(const HttpHead &head, bool isHeadRequest)
{
    if (isHeadRequest || head.status == 204 || head.status == 304)
        return;
    m_state = State::Open;
    readFraming(head);
}

void HttpBody::readFraming(const HttpHead &head)
{
    const QByteArray coding = head.value("transfer-encoding").toLower();
    if (!coding.isEmpty()) {
        m_framing = Framing::Chunks;
        if (coding != "chunked")
            m_state = State::Broken;
        return;
    }
    m_framing = Framing::Connection;
    for (const auto &header : head.headers) {
        if (header.first.toLower() != "content-length")
            continue;
        const qint64 length = number(header.second, 10);
        if (length < 0 || (m_framing == Framing::Length && length != m_length))
            m_state = State::Broken;
        m_framing = Framing::Length;
        m_length = length;
    }
    m_left = m_length;
    if (m_length == 0 && m_state == State::Open)
        m_state = State::Complete;
}

QByteArray HttpBody::take(const QByteArray &received)
{
    if (m_framing == Framing::Connection)
        return received;
    QByteArray bytes;
    int position = 0;
    while (m_state == State::Open && position < received.size()) {
        if (m_framing == Framing::Length || m_part == Part::Data)
            bytes += takeCounted(received, position);
        else
            takeLine(received, position);
    }
    return bytes;
}

QByteArray HttpBody::takeCounted(const QByteArray &received, int &position)
{
    const int count = static_cast<int>(qMin(m_left, qint64(received.size() - position)));
    QByteArray bytes = received.mid(position, count);
    position += count;
    m_left -= count;
    if (m_left == 0 && m_framing == Framing::Length)
        m_state = State::Complete;
    else if (m_left == 0)
        m_part = Part::DataEnd;
    return bytes;
}

void HttpBody::takeLine(const QByteArray &received, int &position)
{
    const int end = received.indexOf('\n', position);
    const int next = end < 0 ? received.size() : end + 1;
    m_line += received.mid(position, next - position);
    position = next;
    if (m_line.size() > lineLimit)
        m_state = State::Broken;
    else if (end >= 0)
        handleLine(m_line.trimmed());
}

void HttpBody::handleLine(const QByteArray &line)
{
    m_line.clear();
    if (m_part == Part::DataEnd) {
        m_part = Part::Size;
        if (!line.isEmpty())
            m_state = State::Broken;
    } else if (m_part == Part::Trailer) {
        if (line.isEmpty())
            m_state = State::Complete;
        else if (++m_trailers > trailersLimit)
            m_state = State::Broken;
    } else {
        m_left = number(line.split(';').constFirst().trimmed(), 16);
        if (m_left < 0)
            m_state = State::Broken;
        m_part = m_left == 0 ? Part::Trailer : Part::Data;
    }
}
