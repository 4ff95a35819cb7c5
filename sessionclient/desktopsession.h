// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"
#include "session/proxyrelay.h"
#include "session/sessionaudio.h"
#include "session/sessiondescription.h"

#include <QObject>

/// Shows one remote desktop on this device's screen, with sound, microphone and redirected devices.
class DesktopSession : public QObject
{
    Q_OBJECT

public:
    explicit DesktopSession(QObject *parent = nullptr);

    /// Starts the session; call it once per object.
    void start(const SessionDescription &description);
    /// Ends the session; ended() follows.
    void stop();
    /// Reads the audio devices from the configuration again.
    void refreshAudio();

signals:
    void ended(const SessionEnd &end);

private:
    void handleEnd(SessionEnd end);

    ProxyRelay m_proxy;
    FreeRdpProcess m_freeRdp;
    SessionAudio m_audio;
};
