// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "session/desktopsession.h"
#include "session/unixsignals.h"

#include <QObject>
#include <QString>

// Runs the one session that a connection file describes.
class SessionClient : public QObject
{
    Q_OBJECT

public:
    explicit SessionClient(const QString &connectionFile, QObject *parent = nullptr);

    void run();
    // False for a member of a server group, where the next one is tried at once.
    bool mayExplain() const { return m_mayExplain; }

signals:
    void ended(const SessionEnd &end);

private:
    QString m_connectionFile;
    DesktopSession m_session;
    UnixSignals m_signals;
    bool m_mayExplain = true;
};
