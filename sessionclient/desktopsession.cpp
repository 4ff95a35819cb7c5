// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/desktopsession.h"

#include "session/deviceconfiguration.h"
#include "session/redirection.h"

DesktopSession::DesktopSession(QObject *parent)
    : QObject(parent)
{
    connect(&m_freeRdp, &FreeRdpProcess::ended, this, &DesktopSession::handleEnd);
}

void DesktopSession::start(const SessionDescription &description)
{
    m_audio.reload();
    SessionDescription session = description;
    if (!session.proxy.userName().isEmpty())
        session.proxy = m_proxy.start(session.proxy);
    const QProcessEnvironment inherited = freeRdpEnvironment(QProcessEnvironment::systemEnvironment());
    const SessionHardware hardware{m_audio.outputDevice(), m_audio.inputDevice(),
                                   redirectionOptions(deviceConfiguration(), usbSerialPorts())};
    m_freeRdp.start(freeRdpCommand(session, hardware), m_audio.addedTo(inherited));
}

/// To xfreerdp a rejected log-on to the proxy is a connection that fails.
void DesktopSession::handleEnd(SessionEnd end)
{
    const bool failed
        = reasonRow(end.reason).status != sessionEndedStatus && end.reason != EndReason::Stopped;
    if (failed && m_proxy.isRejected())
        end.reason = EndReason::ProxyRejected;
    emit ended(end);
}

void DesktopSession::stop()
{
    m_freeRdp.stop();
}

void DesktopSession::refreshAudio()
{
    m_audio.reload();
}
