// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "update/blockreadahead.h"

#include "update/wireformat.h"

#include <QLoggingCategory>

#include <cmath>

Q_LOGGING_CATEGORY(lcReadAhead, "kt.update.readahead")

BlockReadAhead::BlockReadAhead(QObject *parent)
    : QObject(parent)
{
    m_clock.start();
    m_repeatTimer.setSingleShot(true);
    m_repeatTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_repeatTimer, &QTimer::timeout, this, &BlockReadAhead::repeatLate);
}

int BlockReadAhead::window() const
{
    return m_closed ? 1 : m_window;
}

bool BlockReadAhead::isAnotherFile(const UdpFileRequest &request) const
{
    return request.server != m_request.server || request.fileName != m_request.fileName;
}

void BlockReadAhead::begin(const UdpFileRequest &request)
{
    stop();
    m_request = request;
    m_ahead = 0;
    m_window = 1;
    // A block does not name its file.
    m_proven = false;
    m_closed = request.server == m_lateServer && m_clock.elapsed() < m_lateUntilMs;
    m_roundTripMs = -1;
    m_backoff = 1;
    m_replies = 0;
    m_repeated = 0;
}

void BlockReadAhead::request(const UdpFileRequest &request, int &error)
{
    const bool another = isAnotherFile(request);
    const bool again = !another && request.position == m_request.position;
    if (another)
        begin(request);
    m_request.position = request.position;
    // The transfer wants the next block, so it has accepted the total of the one before.
    m_total = request.position > 0 ? m_deliveredTotal : 0;
    const auto arrived = m_arrived.find(request.position);
    if (arrived != m_arrived.end()) {
        const UdpFileReply reply = *arrived;
        m_arrived.erase(arrived);
        requestAhead();
        m_deliveredTotal = reply.total;
        emit blockArrived(reply);
        return;
    }
    // The transfer has waited for seconds.
    if (again && request.position > 0)
        restart();
    if (again || !m_sent.contains(request.position))
        send(request.position, &error);
    requestAhead();
}

void BlockReadAhead::requestAhead()
{
    m_ahead = qMax(m_ahead, quint64(m_request.position) + WireFormat::blockSize);
    const quint64 distance = m_closed ? 1 : largestDistance;
    const quint64 end = qMin(quint64(m_total), m_request.position + distance * WireFormat::blockSize);
    while (m_ahead < end && m_sent.size() < window()) {
        const auto position = static_cast<quint32>(m_ahead);
        m_ahead += WireFormat::blockSize;
        if (!m_arrived.contains(position) && !send(position))
            break;
    }
    if (!m_repeatTimer.isActive() && m_roundTripMs >= 0 && !m_sent.isEmpty())
        m_repeatTimer.start(waitMs());
}

/// A request that cannot be sent counts as lost. Returns false for it.
bool BlockReadAhead::send(quint32 position, int *error)
{
    const int repeats = m_sent.contains(position) ? m_sent.value(position).repeats + 1 : 0;
    m_repeated += repeats > 0 ? 1 : 0;
    forget(position);
    // Before it is sent: a server in this process may reply at once.
    m_sent.insert(position, {++m_number, m_clock.elapsed(), repeats});
    m_order.emplace(m_number, position);
    UdpFileRequest request = m_request;
    request.position = position;
    int result = 0;
    emit ask_WantUdpFileData(request, result);
    if (error)
        *error = result;
    return result == 0;
}

void BlockReadAhead::forget(quint32 position)
{
    const auto sent = m_sent.find(position);
    if (sent == m_sent.end())
        return;
    m_order.erase(sent->number);
    m_sent.erase(sent);
}

void BlockReadAhead::handleReply(const UdpFileReply &reply)
{
    if (!reply.sender.isEqual(m_request.server, QHostAddress::ConvertV4MappedToIPv4))
        return;
    const bool wanted = reply.position == m_request.position;
    const auto found = m_sent.constFind(reply.position);
    if (found != m_sent.constEnd()) {
        const Sent sent = *found;
        forget(reply.position);
        if (!wanted)
            m_arrived.insert(reply.position, reply);
        m_backoff = 1;
        if (sent.repeats == 0)
            measure(m_clock.elapsed() - sent.atMs);
        m_window = qMin(m_window + 1, largestWindow);
        countReply();
        repeatOvertaken(sent.number);
        requestAhead();
    }
    if (wanted) {
        m_deliveredTotal = reply.total;
        emit blockArrived(reply);
    }
}

/// Requests arrive in their order, but for a few that overtake others.
void BlockReadAhead::repeatOvertaken(quint64 number)
{
    while (!m_closed && !m_order.empty() && m_order.begin()->first + overtaken < number)
        send(m_order.begin()->second);
}

/// While nothing arrives at all, one request is repeated, and ever more rarely.
void BlockReadAhead::repeatLate()
{
    const qint64 now = m_clock.elapsed();
    const int wait = waitMs();
    QList<quint32> late;
    for (const auto &[number, position] : m_order) {
        if (now - m_sent.value(position).atMs < wait || (m_backoff > 1 && !late.isEmpty()))
            break;
        late += position;
    }
    for (const quint32 position : qAsConst(late))
        send(position);
    if (!late.isEmpty())
        m_backoff = qMin(m_backoff * 2, longestWaitMs / shortestWaitMs);
    if (!m_sent.isEmpty())
        m_repeatTimer.start(waitMs());
}

/// The usual smoothing of round trips, as in RFC 6298.
void BlockReadAhead::measure(qint64 roundTripMs)
{
    const double sample = static_cast<double>(roundTripMs);
    if (m_roundTripMs < 0) {
        m_roundTripMs = sample;
        m_deviationMs = sample / 2;
        return;
    }
    m_deviationMs += (std::abs(sample - m_roundTripMs) - m_deviationMs) / 4;
    m_roundTripMs += (sample - m_roundTripMs) / 8;
}

int BlockReadAhead::waitMs() const
{
    const int wait = static_cast<int>(std::ceil(m_roundTripMs + 4 * m_deviationMs));
    return qMin(qMax(wait, shortestWaitMs) * m_backoff, longestWaitMs);
}

void BlockReadAhead::countReply()
{
    if (m_closed || ++m_replies < (m_proven ? lossSample : trial))
        return;
    if (m_repeated * 2 < m_replies)
        m_proven = true;
    else if (m_proven)
        m_window = qMax(m_window / 2, 2);
    else
        close("half of the first blocks had to be requested again");
    m_replies = 0;
    m_repeated = 0;
}

void BlockReadAhead::close(const char *reason)
{
    qCInfo(lcReadAhead) << "one request at a time from now on:" << reason;
    m_closed = true;
    forgetAhead();
}

/// Nothing has arrived for seconds. The network may have been away, or the server does not take more than one
/// request.
void BlockReadAhead::restart()
{
    m_window = 1;
    forgetAhead();
    m_ahead = 0;
    if (!m_proven && !m_closed)
        close("it has fallen silent");
}

void BlockReadAhead::forgetAhead()
{
    const QList<quint32> positions = m_sent.keys();
    for (const quint32 position : positions) {
        if (position != m_request.position)
            forget(position);
    }
}

void BlockReadAhead::stop()
{
    m_repeatTimer.stop();
    // The first block needs no care: transfers tell files by it.
    if (!m_sent.isEmpty() && m_sent.lastKey() > 0) {
        m_lateServer = m_request.server;
        m_lateUntilMs = m_clock.elapsed() + lateMs;
    }
    m_sent.clear();
    m_order.clear();
    m_arrived.clear();
    m_request = {};
    m_total = 0;
    m_deliveredTotal = 0;
}
