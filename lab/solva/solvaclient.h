// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/desktopsession.h"
#include "session/sessionsignals.h"
#include "solva/brokerquery.h"
#include "solva/solvaarguments.h"

#include <QObject>

/// Opens a desktop of a broker: requests its address from the broker, then runs the session.
class SolvaClient : public QObject
{
    Q_OBJECT

public:
    explicit SolvaClient(const SolvaArguments &arguments, QObject *parent = nullptr);

    void run();

signals:
    void ended(const SessionEnd &end);

private:
    void openDesktop(const QVector<OfferedDesktop> &desktops);
    void stop();

    SolvaArguments m_arguments;
    BrokerQuery m_query;
    DesktopSession m_session;
    SessionSignals m_signals;
    bool m_opened = false;
};
