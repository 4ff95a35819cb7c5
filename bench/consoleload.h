// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

/// The reply times in milliseconds.
class Latencies
{
public:
    explicit Latencies(QVector<double> times);
    double quantile(double part) const;
    double mean() const;

private:
    QVector<double> m_times; ///< ascending
};

/// A console that sends requests to a device on this machine at full speed. A missing reply ends the program.
class ConsoleLoad
{
public:
    ConsoleLoad();
    ~ConsoleLoad();
    ConsoleLoad(const ConsoleLoad &) = delete;
    ConsoleLoad &operator=(const ConsoleLoad &) = delete;

    bool waitForDevice(int limitMs) const;
    /// Sends each request after the reply to the one before.
    Latencies askInTurn(const std::function<QByteArray(int)> &request, int rounds) const;
    /// Keeps this many requests in progress; returns the requests per second.
    double askAtOnce(const QByteArray &request, int rounds, int atOnce) const;
    /// Sends datagrams of all kinds, most of which get no reply, at the device's pace.
    void pour(int datagrams) const;
    void send(const QByteArray &datagram) const;
    /// Returns whether a reply has arrived, and, where `accepted` is set, no refusal.
    bool receive(int limitMs, bool accepted = false) const;

private:
    int m_socket;
};
