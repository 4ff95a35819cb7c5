// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/linkstate.h"

#include <QObject>
#include <QTimer>

#include <functional>

class NetworkController;
class NetworkProperty;

/// The wireless link: whether an access point is associated, and its address.
///
/// As with `WiredLink`, one look is under way at a time, and what a superseded one still hears changes
/// nothing.
class WirelessLink : public QObject
{
    Q_OBJECT

public:
    static constexpr int pollMs = 5000;

    /// `isEnabled` tells what the configuration says of the interface.
    WirelessLink(NetworkController &network, const std::function<bool()> &isEnabled,
                 QObject *parent = nullptr);

    LinkState state() const;

    /// Reads the link at start, or when it may be another than before.
    void start();
    /// Joining a network has ended.
    void followJoin(bool connected);
    /// The network has been left, to join one anew or for good.
    void followLeft(bool turnedOff);
    void turnOff();
    /// What a device script says: "link", "connected" or "no link".
    void followMessage(const QString &message);
    /// One look at a link that is present or connected.
    void poll();
    /// For tests that have no seconds to spare.
    void setInterval(int milliseconds);

signals:
    void status(const QString &word, int signal);
    void iconShown(bool shown);
    void toolTip(const QString &text);
    void address(const QString &text, bool enabled);
    void indicator(const QString &image);
    void turnedOff();

private:
    int beginLook();
    /// `step` as long as the look `look` has not been superseded.
    template <typename Step>
    auto during(int look, const Step &step);
    void read(int look, const std::function<void(const NetworkProperty &)> &done);
    void lookForAccessPoint(int look);
    void setPresent();
    void setConnected(int look);
    void setAbsent();
    void show(const NetworkProperty &property);

    NetworkController &m_network;
    std::function<bool()> m_isEnabled;
    QTimer m_timer;
    int m_look = 0;
    LinkState m_state = LinkState::Absent;
};
