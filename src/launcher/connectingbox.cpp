// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/connectingbox.h"

ConnectingBox::ConnectingBox(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(timeMs);
    connect(&m_timer, &QTimer::timeout, this, &ConnectingBox::closeConnectionDialog);
}

void ConnectingBox::show(const QString &name)
{
    if (!name.isEmpty())
        m_dialog.setAddress(name);
    m_timer.start();
    if (!m_dialog.isVisible())
        m_dialog.show();
}

void ConnectingBox::closeConnectionDialog()
{
    m_timer.stop();
    m_dialog.hide();
}
