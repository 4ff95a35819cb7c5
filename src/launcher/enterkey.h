// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QVector>

class BrokerLauncher;
class QShortcut;
class QWidget;

namespace Ui {
class SettingsApp;
}

/// The Enter key in the main window: presses the button that has the focus, and on the launcher Connect from
/// everywhere else.
class EnterKey : public QObject
{
    Q_OBJECT

public:
    /// All arguments outlive the object.
    EnterKey(Ui::SettingsApp &form, BrokerLauncher &broker, QWidget &window);

    /// Where this is false, the key belongs to the fields.
    void setEnabled(bool enabled);

private:
    void press();

    Ui::SettingsApp &m_form;
    BrokerLauncher &m_broker;
    QWidget &m_window;
    QVector<QShortcut *> m_shortcuts;
};
