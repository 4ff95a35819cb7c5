// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "solva/solvaclient.h"

#include "session/connectionfile.h"

#include <algorithm>

SolvaClient::SolvaClient(const SolvaArguments &arguments, QObject *parent)
    : QObject(parent)
    , m_arguments(arguments)
{
    connect(&m_query, &BrokerQuery::succeeded, this, &SolvaClient::openDesktop);
    connect(&m_query, &BrokerQuery::failed, this, &SolvaClient::ended);
    connect(&m_session, &DesktopSession::ended, this, &SolvaClient::ended);
    connect(&m_signals, &SessionSignals::stopRequested, this, &SolvaClient::stop);
    connect(&m_signals, &SessionSignals::refreshRequested, &m_session, &DesktopSession::refreshAudio);
}

void SolvaClient::run()
{
    m_query.start(m_arguments.server, m_arguments.session.user, m_arguments.session.password);
}

/// An empty name selects the first desktop.
void SolvaClient::openDesktop(const QVector<OfferedDesktop> &desktops)
{
    const QString &wanted = m_arguments.desktop;
    const auto found
        = std::find_if(desktops.begin(), desktops.end(), [&wanted](const OfferedDesktop &desktop) {
              return wanted.isEmpty() || desktop.name == wanted;
          });
    if (found == desktops.end()) {
        emit ended(
            {EndReason::NotAllowed, QStringLiteral("broker: no desktop \"%1\" in its list").arg(wanted), {}});
        return;
    }
    if (!isUsableAddress(found->address)) {
        emit ended({EndReason::BadAddress,
                    QStringLiteral("broker: no usable address for \"%1\"").arg(found->name),
                    {}});
        return;
    }
    m_opened = true;
    m_arguments.session.address = found->address;
    m_session.start(m_arguments.session);
}

void SolvaClient::stop()
{
    if (m_opened)
        m_session.stop();
    else
        emit ended({EndReason::Stopped, QStringLiteral("stopped before the session began"), {}});
}
