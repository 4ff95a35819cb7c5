// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/enterkey.h"

#include "launcher/brokerlauncher.h"
#include "launcher/settingsapp.h"

#include "ui_settingsapp.h"

#include <QShortcut>

EnterKey::EnterKey(Ui::SettingsApp &form, BrokerLauncher &broker, QWidget &window)
    : m_form(form)
    , m_broker(broker)
    , m_window(window)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, &m_window);
        enter->setAutoRepeat(false);
        m_shortcuts += enter;
        connect(enter, &QShortcut::activated, this, &EnterKey::press);
    }
}

void EnterKey::setEnabled(bool enabled)
{
    for (QShortcut *shortcut : qAsConst(m_shortcuts))
        shortcut->setEnabled(enabled);
}

void EnterKey::press()
{
    const int page = m_form.mainStackedWidget->currentIndex();
    if (auto *button = qobject_cast<QAbstractButton *>(m_window.focusWidget()))
        button->click();
    else if (page == SettingsApp::DesktopsPage)
        m_broker.on_connectSolvaButton_clicked();
    else if (page == SettingsApp::LauncherPage && m_form.solvaPage->isVisible())
        m_form.solvaPage->pressEnter();
    else if (page == SettingsApp::LauncherPage)
        m_form.connectButton->click();
}
