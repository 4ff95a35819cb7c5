// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "target.h"

#include "device/httpmessage.h"

namespace {

struct Taken
{
    QByteArray bytes;
    HttpBody::State state = HttpBody::State::Open;
};

Taken taken(const HttpHead &head, const QByteArray &received, int piece)
{
    HttpBody body(head, false);
    Taken result;
    for (int i = 0; i < received.size(); i += piece)
        result.bytes += body.take(received.mid(i, piece));
    result.state = body.state();
    return result;
}

} // namespace

// The head and the body of a web server's reply. A body does not depend on the pieces in which it arrives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray reply(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int end = reply.indexOf("\n\n");
    const auto head = HttpHead::parse(reply.left(end).split('\n'));
    if (!head || end < 0)
        return 0;
    require(head->status >= 100 && head->status < 1000, "a status");
    const QByteArray received = reply.mid(end + 2);
    const Taken whole = taken(*head, received, received.size() + 1);
    const Taken single = taken(*head, received, 1);
    require(whole.bytes.size() <= received.size(), "a body that was received");
    require(whole.bytes == single.bytes && whole.state == single.state, "the same body of other pieces");
    const qint64 length = HttpBody(*head, false).length();
    require(whole.state != HttpBody::State::Complete || length < 0 || whole.bytes.size() == length
                || head->status == 204 || head->status == 304,
            "a body of the announced length");
    return 0;
}
