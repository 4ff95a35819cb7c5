// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMenu>

class PowerService;

namespace Ui {
class SettingsApp;
}

/// The menu of the power button, and the questions that its entries ask.
class PowerMenu : public QMenu
{
    Q_OBJECT

public:
    /// All arguments outlive the menu.
    PowerMenu(Ui::SettingsApp &form, PowerService &power, QWidget &window);

    /// Opens below the power button.
    void open();
    void shutDown();
    void reboot();
    void sleep();

private:
    Ui::SettingsApp &m_form;
    PowerService &m_power;
    QWidget &m_window;
};
