// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/freerdpprocess.h"
#include "session/sessionaudio.h"
#include "session/sessiondescription.h"

#include <QObject>

// One desktop on this device's screen, with this device's sound.
class DesktopSession : public QObject
{
    Q_OBJECT

public:
    explicit DesktopSession(QObject *parent = nullptr);

    // Once per object.
    void start(const SessionDescription &description);
    // Ends the session; ended() follows.
    void stop();
    // Takes the audio device from the configuration anew.
    void refreshAudio();

signals:
    void ended(const SessionEnd &end);

private:
    FreeRdpProcess m_freeRdp;
    SessionAudio m_audio;
};
