// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/desktopsession.h"
#include "session/sessionsignals.h"

#include <QObject>
#include <QString>

/// Runs the session of one connection file.
class SessionClient : public QObject
{
    Q_OBJECT

public:
    explicit SessionClient(const QString &connectionFile, QObject *parent = nullptr);

    void run();
    /// False for a member of a server group, because the launcher tries the next member at once.
    bool mayExplain() const { return m_mayExplain; }

signals:
    void ended(const SessionEnd &end);

private:
    QString m_connectionFile;
    DesktopSession m_session;
    SessionSignals m_signals;
    bool m_mayExplain = true;
};
