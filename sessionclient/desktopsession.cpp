// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/desktopsession.h"

#include "session/deviceconfiguration.h"
#include "session/redirection.h"

DesktopSession::DesktopSession(QObject *parent)
    : QObject(parent)
{
    connect(&m_freeRdp, &FreeRdpProcess::ended, this, &DesktopSession::ended);
}

void DesktopSession::start(const SessionDescription &description)
{
    m_audio.reload();
    const QProcessEnvironment inherited = freeRdpEnvironment(QProcessEnvironment::systemEnvironment());
    const SessionHardware hardware{m_audio.outputDevice(), m_audio.inputDevice(),
                                   redirectionOptions(deviceConfiguration(), usbSerialPorts())};
    m_freeRdp.start(freeRdpCommand(description, hardware), m_audio.addedTo(inherited));
}

void DesktopSession::stop()
{
    m_freeRdp.stop();
}

void DesktopSession::refreshAudio()
{
    m_audio.reload();
}
