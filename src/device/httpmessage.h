// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QPair>

#include <optional>

/// The head of an HTTP reply.
struct HttpHead
{
    int status = 0;
    QByteArray reason;
    QList<QPair<QByteArray, QByteArray>> headers;

    /// The value of the first header of that name, which is in lower case; empty without one.
    QByteArray value(const QByteArray &name) const;
    /// From the lines before the empty one. No value when the first is not a status line.
    static std::optional<HttpHead> parse(const QByteArrayList &lines);
};

/// Finds the body of an HTTP reply in what is received after its head. Needs no socket.
class HttpBody
{
public:
    enum class State {
        Open,     ///< more is to come
        Complete, ///< all of it was taken
        Broken,   ///< what was received is not HTTP
    };
    /// A longer line between two chunks is not HTTP.
    static constexpr int lineLimit = 4096;
    static constexpr int trailersLimit = 100;

    HttpBody() = default;
    /// `isHeadRequest`: the reply has no body, whatever its head says.
    HttpBody(const HttpHead &head, bool isHeadRequest);

    /// The bytes of the body in the received ones.
    QByteArray take(const QByteArray &received);
    State state() const { return m_state; }
    /// The announced length; -1 without one.
    qint64 length() const { return m_length; }
    /// Whether the end of the connection is the end of the body.
    bool endsWithConnection() const { return m_framing == Framing::Connection; }

private:
    enum class Framing { Length, Chunks, Connection };
    enum class Part { Size, Data, DataEnd, Trailer };

    void readFraming(const HttpHead &head);
    QByteArray takeCounted(const QByteArray &received, int &position);
    void takeLine(const QByteArray &received, int &position);
    void handleLine(const QByteArray &line);

    State m_state = State::Complete;
    Framing m_framing = Framing::Length;
    qint64 m_length = -1;
    qint64 m_left = 0; ///< of the body, or of a chunk
    Part m_part = Part::Size;
    QByteArray m_line;
    int m_trailers = 0;
};
