// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "sessionclient.h"

#include "session/connectionfile.h"

SessionClient::SessionClient(const QString &connectionFile, QObject *parent)
    : QObject(parent)
    , m_connectionFile(connectionFile)
{
    connect(&m_session, &DesktopSession::ended, this, &SessionClient::ended);
    connect(&m_signals, &SessionSignals::stopRequested, &m_session, &DesktopSession::stop);
    connect(&m_signals, &SessionSignals::refreshRequested, &m_session, &DesktopSession::refreshAudio);
}

void SessionClient::run()
{
    const ParsedConnection connection = readConnectionFile(m_connectionFile);
    m_mayExplain = !connection.session.autoDisconnect;
    if (connection.problem) {
        emit ended({*connection.problem, QStringLiteral("connection file: %1").arg(connection.detail), {}});
        return;
    }
    m_session.start(connection.session);
}
