// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

/// The times, in milliseconds, that answers took.
class Latencies
{
public:
    explicit Latencies(QVector<double> times);
    double quantile(double part) const;
    double mean() const;

private:
    QVector<double> m_times; ///< ascending
};

/// A console that asks a device on this machine as fast as it can. An answer that fails to come ends the
/// program.
class ConsoleLoad
{
public:
    ConsoleLoad();
    ~ConsoleLoad();
    ConsoleLoad(const ConsoleLoad &) = delete;
    ConsoleLoad &operator=(const ConsoleLoad &) = delete;

    bool waitForDevice(int limitMs) const;
    /// One request after the other's answer.
    Latencies askInTurn(const std::function<QByteArray(int)> &request, int rounds) const;
    /// Always so many under way; requests a second.
    double askAtOnce(const QByteArray &request, int rounds, int atOnce) const;
    /// Sends datagrams of all kinds, most of which get no answer, no faster than the device takes them.
    void pour(int datagrams) const;

private:
    void send(const QByteArray &datagram) const;
    /// Whether an answer has come, and none that refuses where it must be `accepted`.
    bool receive(int limitMs, bool accepted = false) const;

    int m_socket;
};
