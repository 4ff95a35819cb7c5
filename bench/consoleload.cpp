// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "consoleload.h"

#include "update/consoleformat.h"
#include "update/wireformat.h"

#include <QElapsedTimer>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <numeric>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int answerLimitMs = 30000;
constexpr int resultOffset = 32;
constexpr int resultSize = 4;
constexpr int retryMs = 100;
constexpr int unansweredInARow = 32; ///< fewer than fit into the device's receive buffer
constexpr int refusedEvery = 64;     ///< datagrams
constexpr int mergedEvery = 1024;

/// Datagrams of strangers: unknown commands, server lists, unrequested blocks of a transfer, noise.
QByteArray stray(int number)
{
    QByteArray bytes(40 + number * 37 % 1000, static_cast<char>(number * 131));
    switch (number % 4) {
    case 0:
        return ConsoleFormat::request(static_cast<ConsoleFormat::Command>(100 + number % 1000));
    case 1:
        return bytes.replace(12, 4, QByteArray("\x03\x00\x55\xaa", 4));
    case 2:
        return bytes.leftJustified(12 + WireFormat::blockSize, '\x01').replace(12, 4, "data");
    default:
        return bytes.replace(16, 2, QByteArray("\0\0", 2));
    }
}

/// A document without effect, of a kind whose memory the parser would not free.
QByteArray worstMerge()
{
    QByteArray json = "{\"a\":{}";
    while (json.size() < ConsoleFormat::longestJson - 20)
        json += ",\"a\":{\"b\":\"c\"}";
    return ConsoleFormat::setJsonRequest(json + '}').value();
}

} // namespace

Latencies::Latencies(QVector<double> times)
    : m_times(std::move(times))
{
    std::sort(m_times.begin(), m_times.end());
}

double Latencies::quantile(double part) const
{
    return m_times.at(qRound(part * (m_times.size() - 1)));
}

double Latencies::mean() const
{
    return std::accumulate(m_times.begin(), m_times.end(), 0.0) / m_times.size();
}

ConsoleLoad::ConsoleLoad()
    : m_socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in device{};
    device.sin_family = AF_INET;
    device.sin_port = htons(WireFormat::devicePort);
    device.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (m_socket < 0 || ::connect(m_socket, reinterpret_cast<sockaddr *>(&device), sizeof device) != 0)
        qFatal("no socket");
}

ConsoleLoad::~ConsoleLoad()
{
    ::close(m_socket);
}

void ConsoleLoad::send(const QByteArray &datagram) const
{
    if (::send(m_socket, datagram.constData(), static_cast<size_t>(datagram.size()), 0) != datagram.size()
        && errno != ECONNREFUSED)
        qFatal("a datagram cannot be sent");
}

bool ConsoleLoad::receive(int limitMs, bool accepted) const
{
    pollfd waiting{m_socket, POLLIN, 0};
    char buffer[65536];
    if (::poll(&waiting, 1, limitMs) != 1)
        return false;
    const ssize_t size = ::recv(m_socket, buffer, sizeof buffer, 0);
    // Replies have their result here; in a status it is zero.
    const auto result = QByteArray::fromRawData(buffer, sizeof buffer).mid(resultOffset, resultSize);
    return size >= resultOffset + resultSize && (!accepted || result == QByteArray(resultSize, '\0'));
}

bool ConsoleLoad::waitForDevice(int limitMs) const
{
    QElapsedTimer clock;
    clock.start();
    bool answered = false;
    while (!answered && !clock.hasExpired(limitMs)) {
        send(ConsoleFormat::request(ConsoleFormat::Command::GetJson));
        answered = receive(retryMs);
        if (!answered)
            ::usleep(retryMs * 1000); // fails at once while nothing listens
    }
    while (receive(10 * retryMs)) { } // late replies to earlier requests
    return answered;
}

Latencies ConsoleLoad::askInTurn(const std::function<QByteArray(int)> &request, int rounds) const
{
    QVector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const QByteArray datagram = request(round);
        QElapsedTimer clock;
        clock.start();
        send(datagram);
        if (!receive(answerLimitMs, true))
            qFatal("no answer, or a refusal");
        times += static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }
    return Latencies(times);
}

double ConsoleLoad::askAtOnce(const QByteArray &request, int rounds, int atOnce) const
{
    QElapsedTimer clock;
    clock.start();
    for (int sent = 0; sent < rounds + atOnce; ++sent) {
        if (sent >= atOnce && !receive(answerLimitMs))
            qFatal("no answer");
        if (sent < rounds)
            send(request);
    }
    return rounds * 1e9 / static_cast<double>(clock.nsecsElapsed());
}

void ConsoleLoad::pour(int datagrams) const
{
    const QByteArray document = ConsoleFormat::request(ConsoleFormat::Command::GetJson);
    const QByteArray other = ConsoleFormat::request(ConsoleFormat::Command::GetJson, 0x0121);
    const QByteArray merge = worstMerge();
    for (int sent = 0; sent < datagrams; ++sent) {
        if (sent % unansweredInARow != 0) {
            send(stray(sent));
            continue;
        }
        // Its reply shows that the device has received all earlier ones.
        send(sent % mergedEvery == 0 ? merge : sent % refusedEvery == 0 ? other : document);
        if (!receive(answerLimitMs))
            qFatal("no answer");
    }
}
