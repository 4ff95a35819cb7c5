// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connecttarget.h"

#include <QJsonObject>
#include <QObject>

class AutoConnectPage;
class BrokerLauncher;
class Countdown;

/// What a device does without a user: it connects, or signs in to a broker, after a countdown. Once its user
/// has cancelled the countdown, none begins before the end of the next session.
class AutoStart : public QObject
{
    Q_OBJECT

public:
    enum class Kind { None, Connect, LogOn };

    /// The two pages that count down, and who signs in. All outlive the object.
    struct Parts
    {
        AutoConnectPage &connectPage;
        AutoConnectPage &logonPage;
        BrokerLauncher &broker;
    };

    explicit AutoStart(const Parts &parts, QObject *parent = nullptr);

    void load(const QJsonObject &root);
    /// Corvid connections are automatic.
    bool connects() const;
    /// The server or group of an automatic connection; incomplete where the document names none.
    const ConnectTarget &target() const;
    /// What begins by itself in this "client mode", unless the user has cancelled.
    Kind due(const QString &clientMode) const;

    /// Counts down on the page of this kind, anew where it does so already, and no longer on the other one.
    void count(Kind kind);
    /// Stops countdowns and a log-on in progress, until the launcher is shown again.
    void stop();
    /// Holds a countdown, which `resume` lets go on where it was.
    void pause();
    void resume();
    /// The user does not want what would begin by itself.
    void cancel();
    /// A session has ended: nobody may be there any more.
    void forgetCancel();

private:
    Parts m_parts;
    bool m_connects = false;
    bool m_cancelled = false;
    Countdown *m_paused = nullptr;
    ConnectTarget m_target;
};
