// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "launcher/connectingbox.h"
#include "services/connecttarget.h"
#include "services/connectionfile.h"

#include <QObject>

class AutoConnectPage;
class SessionService;

/// Connects to what was chosen, lets the window make way for the session, and tells the user why there is
/// none.
class Connector : public QObject
{
    Q_OBJECT

public:
    /// All arguments outlive the object.
    Connector(SessionService &session, AutoConnectPage &countdown, QWidget &window);

    /// Refuses a group without members.
    void connectTo(const ConnectTarget &target);
    /// Says what ended the session, where it is an error.
    void explain(ConnectionFile::Verdict verdict);
    /// An automatic connection has no server to go to.
    void showMissingAddress(const ConnectTarget &target);
    void showConnectionError();

private:
    void connectSession();
    void showError(const QString &message);

    SessionService &m_session;
    AutoConnectPage &m_countdown;
    QWidget &m_window;
    ConnectingBox m_box;
};
