// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/connector.h"

#include "launcher/autoconnectpage.h"
#include "launcher/popups.h"
#include "services/sessionservice.h"
#include "widgets/generaldialog.h"

#include <QGuiApplication>
#include <QScreen>

Connector::Connector(SessionService &session, AutoConnectPage &countdown, QWidget &window)
    : m_session(session)
    , m_countdown(countdown)
    , m_window(window)
{
    connectSession();
}

void Connector::connectSession()
{
    connect(&m_session, &SessionService::started, this, [this] {
        Popups::closeAll();
        m_window.hide();
        m_window.setCursor(Qt::WaitCursor);
    });
    connect(&m_session, &SessionService::connecting, &m_box, &ConnectingBox::show);
    connect(&m_session, &SessionService::clientEnded, &m_box, &ConnectingBox::closeConnectionDialog);
    connect(&m_session, &SessionService::ended, this, [this] {
        m_window.show();
        m_window.activateWindow();
        m_window.unsetCursor();
    });
    connect(&m_session, &SessionService::primaryScreenSize, this,
            [](QSize &size) { size = QGuiApplication::primaryScreen()->geometry().size(); });
}

void Connector::connectTo(const ConnectTarget &target)
{
    if (target.isGroup() && target.members.isEmpty()) {
        m_countdown.showStopped();
        GeneralDialog::showError(&m_window, tr("Empty group"),
                                 tr("Group %1 is empty. Connection aborted!").arg(target.name));
        return;
    }
    m_session.connectTo(target);
}

void Connector::explain(ConnectionFile::Verdict verdict)
{
    if (m_session.clientIsMissing())
        showError(tr("The program that shows the desktop could not be started."));
    else if (verdict == ConnectionFile::Verdict::ConnectionError)
        showConnectionError();
}

void Connector::showMissingAddress(const ConnectTarget &target)
{
    showError(tr("Server %1 has no address. Connection aborted!").arg(target.name));
}

void Connector::showConnectionError()
{
    showError(tr("The IP address or domain name you entered is not valid or does not have Corvid "
                 "Pro installed. Please try again."));
}

void Connector::showError(const QString &message)
{
    GeneralDialog::showError(&m_window, tr("Connection Error"), message);
}
