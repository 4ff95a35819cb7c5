// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/powermenu.h"

#include "launcher/stylesheets.h"
#include "services/powerservice.h"
#include "widgets/generaldialog.h"

#include "ui_settingsapp.h"

namespace {
const QPoint offset(-80, 38); ///< from the button
} // namespace

PowerMenu::PowerMenu(Ui::SettingsApp &form, PowerService &power, QWidget &window)
    : m_form(form)
    , m_power(power)
    , m_window(window)
{
    m_form.actionSleep->setIcon(QIcon(QStringLiteral(":/images/sleep.png")));
    m_form.actionReboot->setIcon(QIcon(QStringLiteral(":/images/reboot.png")));
    m_form.actionShutdown->setIcon(QIcon(QStringLiteral(":/images/shutdown.png")));
    setStyleSheet(StyleSheets::powerButtonSheet());
    addActions({m_form.actionSleep, m_form.actionReboot, m_form.actionShutdown});
    connect(&m_power, &PowerService::lockChanged, this, [this](bool locked) {
        close();
        m_form.powerButton->setDisabled(locked);
    });
}

void PowerMenu::open()
{
    // The menu takes the pointer away without the button noticing.
    m_form.powerButton->setAttribute(Qt::WA_UnderMouse, false);
    m_form.powerButton->update();
    popup(m_form.powerButton->mapToGlobal(offset));
}

void PowerMenu::shutDown()
{
    if (GeneralDialog::ask(&m_window, tr("Device shutdown"), tr("Shutdown device?")))
        m_power.shutDown();
}

void PowerMenu::reboot()
{
    if (GeneralDialog::ask(&m_window, tr("Device reboot"), tr("Reboot device?")))
        m_power.resetDevice();
}

void PowerMenu::sleep()
{
    m_power.sleep();
}
